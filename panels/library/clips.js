// The clips of the library, and what notifications do to them. Without DOM.

import { isGood, pathEnd } from '../kit/format.js';
import { finderOf, inOrder } from '../kit/lists.js';
import { fromAssetItem, fromIngestItem, fromMediaInfo, metadataOf, nameAt, saying } from '../kit/media.js';
import { failureText, workTitle } from '../kit/outcome.js';
import { progressText } from '../kit/tasks.js';
import { clipTypes } from '../kit/words.js';

/** What stands of a clip beside what is wrong with it; the first that is so. */
const states = [
    [({ problem }) => problem !== undefined, 'bad', () => ''],
    [({ isUnreachable }) => isUnreachable, 'bad', () => 'Not reachable'],
    [({ isChanged }) => isChanged, 'warn', () => 'Changed on disk'],
    [({ isXmpChanged }) => isXmpChanged, 'warn', () => 'XMP changed'],
    [() => true, '', () => 'Ready'],
];

/**
 * @returns {{tone: string, text: string}} The state of a clip, with the task that works on it, if there is
 *     one.
 */
export function stateOf(clip, task) {
    if (task !== undefined) return { tone: '', text: progressText(task) };
    const [, tone, text] = states.find(([applies]) => applies(clip));
    return { tone, text: text(clip) };
}

const advices = [
    [
        ({ isUnreachable }) => isUnreachable,
        'The file cannot be read. Bring its volume back, then read the XMP again.',
    ],
    [
        ({ isChanged }) => isChanged,
        'The file is another one than when it was read. Read its XMP and properties again.',
    ],
    [({ isXmpChanged }) => isXmpChanged, 'The host told new XMP. Read it from disk to be sure.'],
];

/** @returns {string} What is wrong with a clip and what to do; empty where nothing is. */
export const adviceOf = (clip) => clip.problem ?? advices.find(([applies]) => applies(clip))?.[1] ?? '';

export class ClipList {
    #clips = new Map(); // by path
    #bins = new Map(); // by batch

    get all() {
        return [...this.#clips.values()];
    }

    get(path) {
        return this.#clips.get(path);
    }

    /** Clips are replaced, never changed: whoever holds one holds what was. */
    #put(path, changes) {
        const before = this.#clips.get(path);
        const name = before?.name ?? changes.name ?? changes.alias ?? nameAt(path);
        this.#clips.set(path, {
            copies: [],
            extraPaths: [],
            metadata: [],
            type: clipTypes.masterClip,
            ...before,
            ...changes,
            path,
            key: path,
            name,
        });
    }

    /** @returns {boolean} Whether the notification changes clips. */
    hear(name, message) {
        const step = this.#steps[name];
        step?.(message);
        return step !== undefined;
    }

    #steps = {
        StartIngestBatch: ({ batchID, targetBin }) => this.#bins.set(batchID, targetBin),
        IngestItemsReady: (message) => this.#ingested(message),
        BackupItemsReady: (message) => this.#copied(message),
        ImportXMPStatus: (message) => this.heardXmp('ImportXMP', message),
        ReadXMPFromDiskStatus: (message) => this.heardXmp('ReadXMPFromDisk', message),
        ReadRoughCutFromDiskStatus: (message) => this.heardXmp('ImportXMP', message),
        SaveAsset: (message) => this.#stock(message),
        requestInitInfoStatus: (message) => this.#stock(message),
        XMPChanged: ({ assetMediaInfoList = [] }) => this.#infos(assetMediaInfoList, { isXmpChanged: true }),
        FileChanged: ({ assetMediaInfoList = [], result }) => {
            const isUnreachable = result !== undefined && !isGood(result);
            this.#infos(assetMediaInfoList, { isChanged: !isUnreachable, isUnreachable });
        },
        XMPFileTimeChanged: ({ actionResultList = [] }) => this.#times(actionResultList),
    };

    #ingested({ ingestItemList = [], customMetadata, batchID, taskItemID }) {
        const bin = this.#bins.get(batchID);
        for (const item of ingestItemList.filter((item) => item?.filePath)) {
            const origin = saying({ batchID, taskItemID, bin });
            const fresh = { problem: undefined, isUnreachable: false, isChanged: false };
            const metadata = metadataOf(customMetadata);
            this.#put(item.filePath, { ...fromIngestItem(item), ...origin, metadata, ...fresh });
        }
    }

    /**
     * A copy belongs to the clip of the same batch whose file is called like it; else it is a clip of its
     * own.
     */
    #copied({ ingestItemList = [], batchID }) {
        const ofBatch = this.all.filter((clip) => clip.batchID === batchID);
        const originals = new Map(ofBatch.reverse().map(({ path }) => [pathEnd(path), path]));
        for (const item of ingestItemList.filter((item) => item?.filePath)) {
            const clip = this.#clips.get(originals.get(pathEnd(item.filePath)));
            if (clip === undefined) this.#put(item.filePath, fromIngestItem(item));
            else if (!clip.copies.includes(item.filePath))
                this.#put(clip.path, { copies: [...clip.copies, item.filePath] });
        }
    }

    #infos(infos, changes = {}) {
        for (const info of infos.filter((info) => info?.mediaPath))
            this.#put(info.mediaPath, { ...fromMediaInfo(info), ...changes });
    }

    #stock({ assetMediaInfoList = [], assetItemList = [], ingestItemList = [], customMetadata }) {
        this.#ingested({ ingestItemList, customMetadata });
        for (const item of assetItemList.filter((item) => item?.mediaPath))
            this.#put(item.mediaPath, fromAssetItem(item));
        this.#infos(assetMediaInfoList);
    }

    /** What was read, or why it could not be. */
    heardXmp(what, message) {
        const { result, actionResultList = [], assetMediaInfoList = [] } = message;
        const isRead = result === undefined || isGood(result);
        this.#stock(message);
        for (const { mediaPath } of assetMediaInfoList.filter((info) => info?.mediaPath))
            if (isRead)
                this.#put(mediaPath, {
                    problem: undefined,
                    isChanged: false,
                    isXmpChanged: false,
                    isUnreachable: false,
                });
            else this.failed(what, mediaPath, message);
        for (const item of actionResultList.filter((item) => item?.filePath && !isGood(item.result)))
            this.failed(what, item.filePath, item);
    }

    #times(results) {
        for (const { filePath, fileCreationTime, fileLastModificationTime, result, ...rest } of results)
            if (this.#clips.has(filePath)) {
                this.#put(
                    filePath,
                    saying({ created: fileCreationTime, modified: fileLastModificationTime }),
                );
                if (!isGood(result)) this.failed('ImportXMP', filePath, { result, ...rest });
            }
    }

    /** Something went wrong with a clip; another try begins by forgetting it. */
    failed(what, path, failure) {
        this.note(path, `${workTitle(what)} failed. ${failureText(what, failure)}`);
    }

    note(path, problem) {
        if (this.#clips.has(path)) this.#put(path, { problem });
    }

    /** The answers to requests of this page. */
    thumbnailCame({ thumbnailRequest }) {
        const { clipPath, thumbPath } = thumbnailRequest ?? {};
        if (this.#clips.has(clipPath) && thumbPath) this.#put(clipPath, { thumbnail: thumbPath });
    }

    propertiesCame({ mediaPropertyInfo }) {
        const { filePath, frameRate, startTime, duration, assetID } = mediaPropertyInfo ?? {};
        const path = this.#clips.has(filePath)
            ? filePath
            : this.all.find((clip) => clip.infoID !== undefined && clip.infoID === assetID)?.path;
        if (path === undefined) return;
        const rate = frameRate > 1n ? frameRate : undefined;
        this.#put(path, saying({ rate, start: startTime, length: duration }));
    }

    renamed({ transferResultList = [] }) {
        for (const { src, dst, result } of transferResultList) {
            const clip = this.#clips.get(src);
            if (clip === undefined || !isGood(result) || dst === '' || dst === src) continue;
            const name = clip.name === pathEnd(src) ? pathEnd(dst) : clip.name;
            const renamed = { ...clip, path: dst, key: dst, name, problem: undefined };
            this.#clips.delete(dst);
            this.#clips = new Map(
                [...this.#clips].map(([path, other]) => (path === src ? [dst, renamed] : [path, other])),
            );
        }
    }

    /** A file that was made is a clip, too: it can be transferred. */
    made(path, { from, bin } = {}) {
        const source = this.#clips.get(from);
        this.#put(path, {
            type: clipTypes.masterClip,
            ...saying({ bin: bin ?? source?.bin }),
            madeFrom: from,
        });
    }
}

const sortedBy = {
    name: (clip) => clip.name,
    path: (clip) => pathEnd(clip.path),
    type: (clip) => clip.type,
    length: (clip) => clip.length ?? -1n,
    bin: (clip) => clip.bin ?? '',
    state: (clip) => states.findIndex(([applies]) => applies(clip)),
};

const textOf = ({ name, path, bin = '', metadata }) =>
    [name, path, bin, ...metadata.map(([, value]) => value)].join('\n');

/** @returns {object[]} The clips that hold all words of a search, in order. */
export function listed(clips, { search = '', key = '', descending = false } = {}) {
    const isFound = finderOf(search);
    const found = isFound === undefined ? clips : clips.filter((clip) => isFound(textOf(clip)));
    return sortedBy[key] === undefined ? found : inOrder(found, sortedBy[key], descending);
}
