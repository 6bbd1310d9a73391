// The assets of the collection as a tree, and what notifications do to it. Without DOM.

import { newGuid } from '../client/guid.js';
import { isGood, pathEnd } from '../kit/format.js';
import { finderOf, inOrder } from '../kit/lists.js';
import { fromAssetItem, fromIngestItem, fromMediaInfo, metadataOf, nameAt } from '../kit/media.js';
import { clipTypes } from '../kit/words.js';

/** What a file is as a whole, not as a part of it. */
const wholes = [clipTypes.masterClip, clipTypes.roughCut];

export class AssetTree {
    #nodes = new Map(); // by key
    #roots = []; // keys
    #keysAt = new Map(); // sets of keys by path
    #keyOf = new Map(); // by the asset's id

    get(key) {
        return this.#nodes.get(key);
    }

    get size() {
        return this.#nodes.size;
    }

    /** Nodes are replaced, never changed: whoever holds one holds what was. */
    #put(key, changes) {
        const before = this.#nodes.get(key);
        const name = changes.name ?? before?.name ?? changes.alias ?? nameAt(changes.path);
        const made = {
            type: clipTypes.masterClip,
            children: [],
            copies: [],
            extraPaths: [],
            metadata: [],
            ...before,
            ...changes,
            key,
            name,
        };
        this.#nodes.set(key, made);
        if (!this.#nodes.has(this.#keyOf.get(made.id))) this.#keyOf.set(made.id, key);
        if (before?.path !== made.path) {
            this.#keysAt.get(before?.path)?.delete(key);
            this.#keysAt.set(made.path, (this.#keysAt.get(made.path) ?? new Set()).add(key));
        }
        return made;
    }

    /** @returns {object[]} The nodes of a file. */
    #at(path) {
        return [...(this.#keysAt.get(path) ?? [])].map((key) => this.#nodes.get(key));
    }

    /** An asset that this page tells the host of has ids of this page. */
    #root(key, changes) {
        if (!this.#nodes.has(key)) {
            this.#roots.push(key);
            changes = { id: newGuid(), infoID: newGuid(), ...changes };
        }
        return this.#put(key, changes);
    }

    /** A file stands once as what it is itself; parts of it have its path, too. */
    #rootAt(path, types = wholes) {
        return this.#at(path).find(({ parent, type }) => parent === undefined && types.includes(type))?.key;
    }

    /** @returns {boolean} Whether the notification changes assets. */
    hear(name, message) {
        const step = this.#steps[name];
        step?.(message);
        return step !== undefined;
    }

    #steps = {
        IngestItemsReady: (message) => this.#ingested(message),
        BackupItemsReady: (message) => this.#copied(message),
        SaveAsset: (message) => this.#stock(message),
        requestInitInfoStatus: (message) => this.#stock(message),
        XMPChanged: ({ assetMediaInfoList = [] }) => this.#infos(assetMediaInfoList),
        FileChanged: ({ assetMediaInfoList = [], result }) => {
            const problem =
                result === undefined || isGood(result)
                    ? 'The file has changed on disk. Read its XMP from disk again.'
                    : 'The file cannot be read. Bring its volume back, then read its XMP from disk.';
            this.#infos(assetMediaInfoList, { problem });
        },
    };

    #ingested({ ingestItemList = [], customMetadata }) {
        for (const item of ingestItemList.filter((item) => item?.filePath)) {
            const metadata = metadataOf(customMetadata);
            const changes = { ...fromIngestItem(item), metadata, problem: undefined };
            this.#root(this.#rootAt(item.filePath) ?? item.filePath, changes);
        }
    }

    #copied({ ingestItemList = [] }) {
        const originals = new Map(this.#roots.map((root) => [pathEnd(this.#nodes.get(root).path), root]));
        for (const { filePath } of ingestItemList.filter((item) => item?.filePath)) {
            const key = originals.get(pathEnd(filePath));
            const copies = this.#nodes.get(key)?.copies;
            if (copies !== undefined && !copies.includes(filePath))
                this.#put(key, { copies: [...copies, filePath] });
        }
    }

    #stock({ assetMediaInfoList = [], assetItemList = [], ingestItemList = [], customMetadata }) {
        this.#ingested({ ingestItemList, customMetadata });
        for (const item of assetItemList.filter((item) => item !== null)) this.#item(item);
        this.#infos(assetMediaInfoList);
    }

    /** An asset that stands alone, or in one that is known. What is in it now is all that is in it. */
    #item(item) {
        const changes = fromAssetItem(item);
        const known = changes.id && this.#keyOf.get(changes.id);
        const parent = changes.parentID && this.#keyOf.get(changes.parentID);
        if (this.#nodes.has(parent) && !this.#isIn(parent, known)) return this.#adopt(item, known, parent);
        const whole = wholes.includes(changes.type) ? this.#rootAt(changes.path, [changes.type]) : undefined;
        const key = known ?? whole ?? changes.id ?? changes.path;
        if (key === '') return; // nothing is said of it
        this.#root(key, { ...changes, problem: undefined });
        this.#fill(key, item);
    }

    /** @returns {boolean} Whether an asset is another one, or stands in it. */
    #isIn(key, other) {
        for (let node = this.#nodes.get(key); node !== undefined; node = this.#nodes.get(node.parent))
            if (node.key === other) return true;
        return false;
    }

    /** Lets an asset stand in another one, and nowhere else. */
    #adopt(item, known, parent) {
        const { children } = this.#nodes.get(parent);
        const key = known ?? fromAssetItem(item).id ?? `${parent}/${children.length}`;
        const before = this.#nodes.get(key);
        if (before !== undefined && before.parent !== parent) this.#leave(before);
        this.#put(key, { ...fromAssetItem(item), parent });
        this.#fill(key, item);
        if (!children.includes(key)) this.#put(parent, { children: [...children, key] });
    }

    #leave({ key, parent }) {
        const without = (keys) => keys.filter((other) => other !== key);
        if (parent === undefined) this.#roots = without(this.#roots);
        else this.#put(parent, { children: without(this.#nodes.get(parent).children) });
    }

    #fill(key, { subAssetItemList = [] }) {
        const before = this.#nodes.get(key).children;
        const children = [];
        for (const item of subAssetItemList.filter((item) => item !== null))
            children.push(this.#child(item, key, children));
        for (const gone of before.filter((child) => !children.includes(child))) this.#remove(gone);
        this.#put(key, { children });
    }

    /** An asset that stands elsewhere, too, stands here under a key of its own. */
    #child(item, parent, others) {
        const changes = fromAssetItem(item);
        const known = changes.id && this.#nodes.get(this.#keyOf.get(changes.id));
        const own = known?.key ?? changes.id;
        const isFree = own && !others.includes(own) && (!known || known.parent === parent);
        const key = isFree ? own : `${parent}/${others.length}`;
        this.#put(key, { ...changes, parent });
        this.#fill(key, item);
        return key;
    }

    #remove(key) {
        const { id, path, children } = this.#nodes.get(key);
        for (const child of children) this.#remove(child);
        this.#nodes.delete(key);
        if (this.#keyOf.get(id) === key) this.#keyOf.delete(id);
        const keys = this.#keysAt.get(path);
        keys.delete(key);
        if (keys.size === 0) this.#keysAt.delete(path);
    }

    #infos(infos, changes = {}) {
        for (const info of infos.filter((info) => info?.mediaPath)) {
            const { infoID, ...told } = fromMediaInfo(info);
            if (this.#at(told.path).length === 0)
                this.#root(told.path, { ...told, ...changes, ...(infoID && { infoID }) });
            const { type, ...shared } = told; // a sub-clip has the XMP of its clip, but not its type
            for (const { key } of this.#at(told.path)) this.#put(key, { ...shared, ...changes });
        }
    }

    /** The answer to a reading of XMP. */
    xmpCame({ assetMediaInfoList = [] }) {
        this.#infos(assetMediaInfoList, { problem: undefined });
    }

    /** At which the times of an asset count: where it says none, that of its file, then of what is in it. */
    rateOf({ rate, path, children }) {
        const inFile = rate ?? this.#at(path).find((node) => node.rate !== undefined)?.rate;
        return inFile ?? (children.length > 0 ? this.rateOf(this.#nodes.get(children[0])) : undefined);
    }

    failed(key, problem) {
        if (this.#nodes.has(key)) this.#put(key, { problem });
    }

    /**
     * @param {{isShut: (key: string) => boolean, search?: string, sortedBy?: (node) => unknown, descending?:
     *     boolean}} how `sortedBy`: by what those beside each other are put in order.
     * @returns {object[]} Nodes with their `level` and whether they are `expanded`, in the order of the tree.
     *     Of a search those found and what holds them.
     */
    rows({
        isShut,
        search = '',
        textOf = ({ name, path }) => `${name}\n${path}`,
        sortedBy,
        descending = false,
    }) {
        const isFound = finderOf(search);
        const rows = [];
        const nodesOf = (keys) => {
            const nodes = keys.map((key) => this.#nodes.get(key));
            return sortedBy === undefined ? nodes : inOrder(nodes, sortedBy, descending);
        };
        const add = (node, level) => {
            const place = rows.length;
            const isParent = node.children.length > 0;
            const expanded = isParent ? isFound !== undefined || !isShut(node.key) : undefined;
            rows.push({ key: node.key, node, level, expanded });
            if (expanded) for (const child of nodesOf(node.children)) add(child, level + 1);
            if (rows.length === place + 1 && isFound?.(textOf(node)) === false) rows.pop();
        };
        for (const root of nodesOf(this.#roots)) add(root, 0);
        return rows;
    }
}
