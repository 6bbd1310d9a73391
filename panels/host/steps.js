// What the host can tell of a task that runs: callbacks, filled in with what was asked.

import model from '../client/model.js';
import { findRequest } from '../client/rules.js';
import { argumentsOf, findCallback, labelsOf } from './examples.js';

const join = (folder, name) => `${folder.replace(/[\\/]$/, '')}/${name}`;
const nameOf = (path) => path.split(/[\\/]/).at(-1);
const list = (value) => (Array.isArray(value) ? value.filter((item) => item !== null) : []);
const fileOf = (item) => item?.outputFileName || nameOf(item?.filePath ?? '');

/** What arguments of the dispatcher's operations, behind task and message, say of the callback's. */
const asked = {
    StartTransfer: (items) => ({
        results: list(items).map(({ src, dst, dstIsParent }) => ({
            src,
            dst: dstIsParent ? join(dst, nameOf(src)) : dst,
        })),
    }),
    RenameItems: (items) => ({
        results: list(items).map(({ src, newName }) => ({
            src,
            dst: src.slice(0, src.length - nameOf(src).length) + newName,
        })),
    }),
    CreateThumbnail: (path, time, asset, batch, item) => ({
        'clip path': path,
        'start time': time,
        asset,
        batch,
        'task item': item,
    }),
    ReadXMPFile: (path, asset, batch, item) => ({
        'media path': path,
        'media info': asset,
        batch,
        'task item': item,
    }),
    QueryMediaPropertyInfo: (path, asset) => ({ info: { ...exampleInfo(), filePath: path, assetID: asset } }),
    StartTranscode: (preset, folder, xmp, items) => ({
        'output path': join(folder, fileOf(list(items)[0])),
    }),
    StartConcatenation: (preset, folder, file) => ({ 'output path': join(folder, file) }),
};

const exampleInfo = () => findCallback('OnGetMediaPropertyInfoStatus').example.info;

/** @returns {object} Arguments of callbacks by their names; none where the call is unknown or odd. */
function askedIn(call) {
    try {
        return asked[call?.dispatcher]?.(...call.args.slice(2)) ?? {};
    } catch {
        return {};
    }
}

/** What fails fails for what was asked. */
function failing(callback, values) {
    const fails = findCallback(callback).fails ?? {};
    const results = fails.results && list(values.results).map((item) => ({ ...fails.results[0], ...item }));
    const info = fails.info &&
        values.info && { filePath: values.info.filePath, assetID: values.info.assetID };
    return { ...values, ...fails, ...(results?.length > 0 && { results }), ...(info && { info }) };
}

/** Callbacks that send one of these notifications, as the model says. */
const sendersOf = (identifiers = []) => [
    ...new Set(
        identifiers
            .flatMap((type) => model.events.find(({ identifier }) => identifier === type)?.sent ?? [])
            .map(({ callback }) => callback)
            .filter((callback) => callback !== undefined),
    ),
];

const words = (name) =>
    name.replace(/^On(Ingest)?/, '').replace(/(?<=[a-z])[A-Z]/g, (letter) => ` ${letter.toLowerCase()}`);

/**
 * @param {{what: string, taskID: string, msgID: string, percentage?: number | null}} running A task of the
 *     state.
 * @param {{dispatcher: string, args: unknown[]}} [call] What the dispatcher was called with, if it is known.
 * @returns {{label: string, callback: string, args: unknown[]}[]} What the host can tell of it next.
 */
export function stepsOf({ what, taskID, msgID, percentage }, call) {
    const request = findRequest(what === 'Ingest' ? 'IngestMedia' : what);
    if (request === undefined) return [];
    const next = Math.min(100, (percentage ?? 0) + 25);
    const ids = { task: taskID, message: msgID, tasks: [taskID], percentage: next };
    const values = { ...askedIn(call), ...ids };
    const called = request.handling.flatMap(({ answer }) => answer.callbacks ?? []);
    const answering = sendersOf(request.answers).filter((callback) => called.includes(callback));
    const step = (label, callback, given) => ({ label, callback, args: argumentsOf(callback, given) });
    return [
        ...sendersOf(request.progress).map((callback) =>
            step(
                labelsOf(callback).includes('percentage') ? `Progress ${next} %` : words(callback),
                callback,
                values,
            ),
        ),
        ...answering.map((callback) => step('Finished', callback, values)),
        ...answering.map((callback) => step('Failed', callback, failing(callback, values))),
    ];
}

/** @returns {string | undefined} The status that answers a task which no callback answers. */
export function statusOf({ what }) {
    const request = findRequest(what);
    const isHosts = request?.handling.some(({ answer }) => answer.sender === 'host');
    return isHosts ? request.answers?.find((type) => sendersOf([type]).length === 0) : undefined;
}
