// What the requests of the library panel hold, from clips and what was asked of the person. Without DOM.

import { pathEnd } from '../kit/format.js';
import { saying } from '../kit/media.js';
import { withoutEnding } from '../kit/paths.js';
import { overwriting, transferTypes } from '../kit/words.js';

const isWhole = (ticks, rate) => typeof ticks === 'bigint' && ticks % rate === 0n;

/** The whole of a clip, where it is known in frames; without it hosts take the whole, too. */
export function rangeOf({ path, rate, start, length }) {
    const isKnown = rate !== undefined && isWhole(start, rate) && isWhole(length, rate);
    return { filePath: path, ...(isKnown && { frameRate: rate, startTime: start, duration: length }) };
}

const originOf = ({ batchID, taskItemID }) => saying({ batchID, taskItemID });

export const importXmp = (clip) => ({ fileList: [clip.path], ...originOf(clip) });

export const mediaInfoOf = ({ path, name, infoID, type, xmp }) => ({
    mediaPath: path,
    aliasName: name,
    assetMediaType: type,
    ...saying({ assetMediaInfoGUID: infoID, xmpString: xmp }),
});

export const readXmp = (clip) => ({
    assetMediaInfoList: [{ ...mediaInfoOf(clip), xmpString: null }],
    ...originOf(clip),
});

export const writeXmp = (clip, xmp) => ({ assetMediaInfoList: [{ ...mediaInfoOf(clip), xmpString: xmp }] });

export const properties = ({ path, infoID }) => ({
    mediaPropertyInfo: { filePath: path, ...saying({ assetID: infoID }) },
});

/** @param {bigint} offset From where the clip begins. */
export const thumbnail = (clip, offset) => ({
    thumbnailRequest: {
        clipPath: clip.path,
        startTime: (clip.start ?? 0n) + offset,
        ...saying({ assetID: clip.infoID }),
    },
    ...originOf(clip),
});

/** @param {{preset, folder, name, ending, withXmp}} values `name` of one file, `ending` of several. */
export const transcode = (clips, { preset, folder, name, ending, withXmp }) => ({
    presetPath: preset,
    outputDirectory: folder,
    outputXMP: withXmp,
    transcodeItemList: clips.map((clip) => ({
        ...rangeOf(clip),
        outputFileName: name ?? withoutEnding(pathEnd(clip.path)) + ending,
    })),
});

export const concatenate = (clips, { preset, folder, name, withXmp }) => ({
    presetPath: preset,
    outputDirectory: folder,
    outputFileName: name,
    outputXMP: withXmp,
    concatenationItemList: clips.map(rangeOf),
});

export const transfer = (clips, { where, folder, overwrite, server, port, user, password }) => ({
    transferType: transferTypes[where],
    transferOption: overwrite ? overwriting : 0,
    transferItemList: clips.map(({ path }) => ({ src: path, dst: folder, dstIsParent: true })),
    ...(where === 'ftp' && {
        ftpSetting: {
            ftpServerName: server,
            ftpPort: Number(port),
            ftpUserName: user,
            ftpPassword: password,
        },
    }),
});

export const rename = ({ path }, newName) => ({ renameItemList: [{ src: path, newName }] });
