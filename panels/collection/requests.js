// What the requests of the media collection panel hold, from assets and what was asked of the person. Without
// DOM.

import { pathEnd, pathFolder } from '../kit/format.js';
import { saying } from '../kit/media.js';

export const linesOf = (text) =>
    text
        .split('\n')
        .map((line) => line.trim())
        .filter(Boolean);

/**
 * @returns {string | undefined} Why the host could not find these files: it looks for all in the folder of
 *     the first.
 */
export function pathsProblem(text) {
    const [first, ...others] = linesOf(text);
    if (first === undefined) return 'Enter the path of a file.';
    if (pathFolder(first) === '') return 'Begin with a whole path, such as /media/day1/A001.mov.';
    const stray = others.find((path) => pathFolder(path) !== '' && pathFolder(path) !== pathFolder(first));
    return stray === undefined
        ? undefined
        : `${pathEnd(stray)} is in another folder than ${pathEnd(first)}. Ingest it on its own.`;
}

export const ingest = ({ paths, isCopied, copyTo, isVerified, mode }) => {
    const [first, ...others] = linesOf(paths);
    return {
        ingestMediaItemList: {
            items: [first, ...others.map(pathEnd)],
            isCopy: isCopied ? 'Copy' : 'NoCopy',
            ...(isCopied && { copyToFolder: copyTo.trim(), isVerify: isVerified ? 'Verify' : 'NoVerify' }),
            ...(isCopied && isVerified && { verifyMode: mode }),
        },
    };
};

const mediaInfoOf = ({ path, name, infoID, type, content, created, modified }) => ({
    mediaPath: path,
    aliasName: name,
    assetMediaType: type,
    ...saying({
        assetMediaInfoGUID: infoID,
        fileContent: content,
        createTime: created,
        lastModifyTime: modified,
    }),
});

export const readXmp = (nodes) => ({ assetMediaInfoList: nodes.map(mediaInfoOf) });

/** @param {(key: string) => object} get Gives the assets in one. */
const itemOf = (node, get) => ({
    assetMediaType: node.type,
    mediaPath: node.path,
    assetName: node.name,
    subAssetItemList: node.children.map((key) => itemOf(get(key), get)),
    ...saying({
        assetGUID: node.id,
        parentGUID: node.parentID,
        assetMediaInfoGUID: node.infoID,
        assetClipItemGuid: node.clipItemID,
        inPoint: node.start,
        duration: node.length,
        parentBinPath: node.bin,
    }),
});

export const save = (nodes, get) => ({ assetItemList: nodes.map((node) => itemOf(node, get)) });

/** Media information of each file once: that of the assets and of those in them. */
export function exportAssets(nodes, get) {
    const infos = new Map();
    const add = (node) => {
        if (!infos.has(node.path))
            infos.set(node.path, { ...mediaInfoOf(node), ...(node.xmp && { xmpString: node.xmp }) });
        for (const key of node.children) add(get(key));
    };
    nodes.forEach(add);
    return { assetMediaInfoList: [...infos.values()], ...save(nodes, get) };
}

/** @param {string} [before] What the column was called. */
export const insertColumn = (id, name, before) => ({
    newDynamicColumns: [[id, name]],
    ...(before !== undefined && { previousColumnNames: [[id, before]] }),
});

export const deleteColumn = (id) => ({ deleteDynamicColumns: [id] });

export const fillFields = (assetID, values) => ({ dynamicColumnFieldValues: [[assetID, values]] });

export const report = ({ level, text, isShown }) => ({
    event: { eventType: level, eventString: text, showMessage: isShown },
});
