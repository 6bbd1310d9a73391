// How work ended, from the answer to its request or from what became of it, in words for people.

import { errorText, isGood, resultName, resultText } from './format.js';

/** What the work of a request is called, what to do when it fails, and why it fails where nobody says. */
export const works = {
    OpenIngestDialog: ['Open the ingest dialog', 'Look whether the host shows a dialog already.'],
    IngestMedia: [
        'Ingest',
        'Check the path and the folder for copies, then ingest what is missing.',
        'Nothing is there, or a folder instead of a file, or a file instead of a folder.',
    ],
    Ingest: ['Ingest'],
    ImportXMP: ['Read XMP', 'Check that the file is still there, then read it again.'],
    ReadXMPFromDisk: [
        'Read XMP from disk',
        'Check that the file is there and can carry XMP, then read again.',
    ],
    ReadXMPFromCache: [
        'Read XMP of the project',
        'Read it from disk, if the project does not know the clip.',
    ],
    WriteXMPToDisk: ['Write XMP', 'Check that the file can be written, then write it again.'],
    RequestThumbnail: ['Thumbnail', 'Choose another time within the clip, then ask again.'],
    GetMediaPropertyInfo: ['Properties', 'Check that the file is still there, then ask again.'],
    TranscodeRequest: ['Transcode', 'Check preset and output folder, then transcode again.'],
    ConcatenationRequest: ['Concatenate', 'Check preset and output folder, then concatenate again.'],
    TransferRequest: ['Transfer', 'Check the folder, or server, user and password; then transfer again.'],
    RenameRequest: ['Rename', 'Check that no file has the new name and that it is not in use.'],
    TriggerSaveAsset: [
        'Save',
        'Check that the project is open and its folder can be written, then save again.',
    ],
    ReportEvent: ['Report'],
    ExportAsset: ['Export', 'Look at the host for the reason, then export again.'],
};

export const workTitle = (what) => works[what]?.[0] ?? what;

const accessAdvice = 'Ask for the right to read and write there, then try again.';

/** What hosts say may lack its end. */
const sentence = (text) => (text === '' || /[.!?…]$/.test(text) ? text : `${text}.`);

/** @returns {string} Why something failed and what to do about it. */
export function failureText(what, { result, errorMessage = '' } = {}) {
    const isDenied = resultName(result) === 'AccessDenied';
    const [, advice = '', usual = 'The host gave no reason.'] = works[what] ?? [];
    const reason = sentence(errorMessage.trim()) || (isDenied ? 'Access was denied.' : usual);
    return `${reason} ${isDenied ? accessAdvice : advice}`.trim();
}

const statusOf = (name) => (name === 'Canceled' ? 'cancelled' : 'failed');

/**
 * @param {string} what The request.
 * @param {object} answer Its record.
 * @returns {{status: string, detail: string, items: {path: string, text: string}[]}} `items`: what failed
 *     alone.
 */
export function outcomeOf(what, answer) {
    const { result, errorInfo, actionResultList = [], transferResultList = [] } = answer;
    const failed = [...transferResultList, ...actionResultList].filter(
        (item) => item && !isGood(item.result),
    );
    const items = failed.map((item) => ({
        path: item.src || item.filePath || '',
        text: failureText(what, item),
    }));
    const isWhole = result === undefined || isGood(result);
    if (isWhole && items.length === 0) return { status: 'done', detail: '', items };
    if (items.length === 0) {
        const status = statusOf(resultName(result));
        const detail = status === 'cancelled' ? '' : failureText(what, { result, errorMessage: errorInfo });
        return { status, detail, items };
    }
    return { status: isWhole ? 'done' : statusOf(resultName(result)), detail: '', items };
}

/**
 * @param {string} work What people call it.
 * @returns {Map<string, string>} Of work that went wrong, what to say at each file: at those that failed, or
 *     at all.
 */
export function problemsOf(work, paths, { status, detail, items }) {
    if (status !== 'failed' && status !== 'lost') return new Map();
    const begin = status === 'failed' ? `${work} failed.` : `${work}:`;
    const known = new Map(items.map(({ path, text }) => [path, text]));
    const concerned = known.size === 0 ? paths : paths.filter((path) => known.has(path));
    return new Map(concerned.map((path) => [path, `${begin} ${known.get(path) ?? detail}`]));
}

/** Of a request that got no answer. What nobody answers for certain may well be done. */
export function outcomeOfError(error, { isSilent = false } = {}) {
    if (isSilent && error?.code === 'timeout')
        return { status: 'done', detail: 'Sent; this host does not say how it went.', items: [] };
    const status = { aborted: 'cancelled', disconnected: 'lost' }[error?.code] ?? 'failed';
    return { status, detail: status === 'cancelled' ? '' : errorText(error), items: [] };
}

export const statusTexts = {
    running: 'Running',
    paused: 'Paused',
    done: resultText('OK'),
    failed: resultText('ERROR'),
    cancelled: resultText('Canceled'),
    lost: 'Not known',
};
