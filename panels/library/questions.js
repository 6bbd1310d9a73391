// What the library panel asks before it raises a request. What was entered last stands there again, passwords
// never.

import { ticksPerSecond } from '../client/values.js';
import { ask } from '../kit/dialog.js';
import { pathEnd, pathFolder, plural, ticksOf, timecode } from '../kit/format.js';
import { nameProblem, pathProblem, withoutEnding } from '../kit/paths.js';

const last = { bin: '', preset: '', folder: '', withXmp: true, where: 'local', target: '', port: '21' };

/** Asks, and keeps what was entered for the next time. */
async function askAndKeep(question) {
    const values = await ask(question);
    for (const { name, type, keep = name } of question.fields)
        if (type !== 'password' && values?.[name] !== undefined && keep in last) last[keep] = values[name];
    return values;
}

const presetField = () => ({
    name: 'preset',
    label: 'Preset',
    value: last.preset,
    required: true,
    check: pathProblem,
    hint: 'The path of a preset file of the host.',
});
const folderField = (clip) => ({
    name: 'folder',
    label: 'Output folder',
    value: last.folder || pathFolder(clip.path),
    required: true,
    check: pathProblem,
});
const withXmpField = () => ({
    name: 'withXmp',
    label: 'Write XMP to the new file',
    type: 'checkbox',
    value: last.withXmp,
});

export const ingest = () =>
    askAndKeep({
        title: 'Ingest',
        text: 'The host opens its ingest dialog. What is ingested shows in the list as it comes.',
        fields: [
            { name: 'bin', label: 'Target bin', value: last.bin, hint: 'Empty: where the host puts it.' },
        ],
        action: 'Open ingest dialog',
    });

export const rename = (clip) =>
    ask({
        title: 'Rename file',
        text: `In ${pathFolder(clip.path)}.`,
        fields: [
            {
                name: 'name',
                label: 'New name',
                value: pathEnd(clip.path),
                required: true,
                check: (name) => nameProblem(name, clip),
            },
        ],
        action: 'Rename',
    });

export function thumbnail({ name, rate, length }) {
    const usual = 2n * ticksPerSecond;
    const first = length === undefined || usual < length ? usual : 0n;
    const check = (text) => {
        const ticks = ticksOf(text, rate);
        if (ticks === undefined) return `Enter a time such as ${timecode(first, rate)}.`;
        if (length !== undefined && ticks >= length) return `The clip is ${timecode(length, rate)} long.`;
        return undefined;
    };
    const value = timecode(rate === undefined ? first : (first / rate) * rate, rate);
    return ask({
        title: `Thumbnail of ${name}`,
        fields: [{ name: 'at', label: 'Time from the clip’s start', value, required: true, check }],
        action: 'Request thumbnail',
    });
}

export const transcode = (clips) =>
    askAndKeep({
        title: `Transcode ${plural(clips.length, 'clip')}`,
        fields: [
            presetField(),
            folderField(clips[0]),
            clips.length === 1
                ? {
                      name: 'name',
                      label: 'File name',
                      required: true,
                      check: (name) => nameProblem(name),
                      value: `${withoutEnding(pathEnd(clips[0].path))}_preview.mp4`,
                  }
                : {
                      name: 'ending',
                      label: 'End of the file names',
                      required: true,
                      value: '_preview.mp4',
                      check: (ending) => nameProblem(ending) ?? endingProblem(clips, ending),
                      hint: 'Stands behind the name of each clip.',
                  },
            withXmpField(),
        ],
        action: 'Transcode',
    });

const mostNames = 12;

function namesOf(clips) {
    const names = clips.slice(0, mostNames).map(({ name }) => name);
    if (clips.length > mostNames) names.push(`and ${plural(clips.length - mostNames, 'other')}`);
    return names.join(', ');
}

/** @returns {string | undefined} Files of one name are one file. */
function endingProblem(clips, ending) {
    const names = clips.map(({ path }) => withoutEnding(pathEnd(path)) + ending);
    const seen = new Set();
    const doubled = names.find((name) => seen.size === seen.add(name).size);
    return doubled && `Two clips would both become ${doubled}. Transcode one of them on its own.`;
}

export const concatenate = (clips) =>
    askAndKeep({
        title: `Concatenate ${plural(clips.length, 'clip')}`,
        text: `In the order of the list: ${namesOf(clips)}.`,
        fields: [
            presetField(),
            folderField(clips[0]),
            { name: 'name', label: 'File name', required: true, check: (name) => nameProblem(name) },
            withXmpField(),
        ],
        action: 'Concatenate',
    });

const isFtp = ({ where }) => where === 'ftp';

export const transfer = (clips) =>
    askAndKeep({
        title: `Transfer ${plural(clips.length, 'clip')}`,
        fields: [
            {
                name: 'where',
                label: 'To',
                type: 'select',
                value: last.where,
                options: [
                    ['local', 'A folder of the host'],
                    ['ftp', 'An FTP server'],
                ],
            },
            { name: 'server', label: 'Server', value: last.server, required: true, when: isFtp },
            {
                name: 'port',
                label: 'Port',
                type: 'number',
                value: last.port,
                required: true,
                when: isFtp,
                min: 1,
                max: 65535,
                check: (port) => (port >= 1 && port <= 65535 ? undefined : 'Enter 1 to 65535.'),
            },
            { name: 'user', label: 'User', value: last.user, when: isFtp },
            { name: 'password', label: 'Password', type: 'password', when: isFtp, hint: 'Is not kept.' },
            {
                name: 'folder',
                label: 'Folder',
                keep: 'target',
                value: last.target,
                required: true,
                check: pathProblem,
            },
            { name: 'overwrite', label: 'Overwrite files that are there', type: 'checkbox' },
        ],
        action: 'Transfer',
    });

export const writeXmp = ({ name, xmp }) =>
    ask({
        title: `Write XMP of ${name}`,
        text: 'The host writes this to the file, in place of what it has.',
        fields: [{ name: 'xmp', label: 'XMP', type: 'textarea', value: xmp, required: true }],
        action: 'Write to disk',
    });
