// What notifications say of media files, in one form for lists of clips and trees of assets. Without DOM.

import { rateOf } from '../client/values.js';
import { zeroGuid } from '../client/guid.js';
import { pathEnd } from './format.js';
import { clipTypes } from './words.js';

export const typeNames = {
    [clipTypes.masterClip]: 'Clip',
    [clipTypes.subClip]: 'Sub-clip',
    [clipTypes.roughCut]: 'Rough cut',
    [clipTypes.rcSubClip]: 'Sub-clip of a rough cut',
};

/** @returns {boolean} Whether it is a rough cut or stands in one: such have no XMP of their own. */
export const isOfRoughCut = ({ type }) => type === clipTypes.roughCut || type === clipTypes.rcSubClip;

/** @returns {string} What a file is called, where nobody says. */
export const nameAt = (path) => pathEnd(path ?? '') || path || 'Without a name';

const known = (id) => (id === undefined || id === zeroGuid ? undefined : id);

function rateOfInfo({ rateTimeBase = '', rateNtsc = '' }) {
    const base = /^\d{1,3}$/.test(rateTimeBase) ? Number(rateTimeBase) : 0;
    if (base === 0) return undefined;
    return rateNtsc.toUpperCase() === 'TRUE' ? rateOf(base * 1000, 1001) : rateOf(base);
}

/** @returns {object} An object without the members that say nothing. */
export function saying(object) {
    return Object.fromEntries(
        Object.entries(object).filter(([, value]) => value !== undefined && value !== null && value !== ''),
    );
}

/** Of a file that was ingested. */
export const fromIngestItem = (item) => ({
    path: item.filePath,
    name: item.aliasName || nameAt(item.filePath),
    type: clipTypes.masterClip,
    ...saying({
        format: item.clipFormat,
        rate: item.frameRate > 1n ? item.frameRate : undefined,
        start: item.startTime,
        length:
            typeof item.endTime === 'bigint' && typeof item.startTime === 'bigint'
                ? item.endTime - item.startTime
                : undefined,
    }),
    extraPaths: item.extraPathList ?? [],
});

/** Of media information. What people call the file already stands: connectors make names from the path. */
export const fromMediaInfo = (info) => ({
    path: info.mediaPath,
    alias: info.aliasName || nameAt(info.mediaPath),
    ...saying({
        infoID: known(info.assetMediaInfoGUID),
        type: info.assetMediaType || undefined,
        xmp: info.xmpString,
        content: info.fileContent,
        custom: info.customMetadata,
        created: info.createTime,
        modified: info.lastModifyTime,
        rate: rateOfInfo(info),
    }),
});

/** Of an asset, without those in it. */
export const fromAssetItem = (item) => ({
    path: item.mediaPath,
    name: item.assetName || nameAt(item.mediaPath),
    ...saying({
        id: known(item.assetGUID),
        infoID: known(item.assetMediaInfoGUID),
        parentID: known(item.parentGUID),
        clipItemID: known(item.assetClipItemGuid),
        type: item.assetMediaType || undefined,
        start: item.inPoint,
        length: item.duration,
        bin: item.parentBinPath,
    }),
});

/** @returns {[string, string][]} What the user gave on ingest, as names and values to show. */
export function metadataOf(customMetadata) {
    const { namespaces = [], keywords = [] } = customMetadata?.minimumMetadata ?? {};
    const properties = namespaces.flatMap((space) => (space === null ? [] : space.properties));
    return keywords.length > 0 ? [...properties, ['Keywords', keywords.join(', ')]] : properties;
}
