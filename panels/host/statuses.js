// The notifications that no connector sends: they are the host's own. Of each what it says, if that is known.

import model from '../client/model.js';
import { shortName } from '../client/rules.js';

const clip = '/media/day1/A001_C001.mov';
const asset = 'a55e0001-0000-4000-8000-000000000001';
const answer = { result: 'OK' };
const marker = {
    ownerClipPath: clip,
    frameRate: 10160640000,
    marker: { propertyXML: '<marker name="Best take"/>' },
};
const info = { assetMediaType: 1, assetMediaInfoGUID: asset, mediaPath: clip, aliasName: 'Harbour, wide' };
const markers = { markerInfoList: [marker] };

/** Members beside the header, by the last part of the identifier. What answers says `result`, too. */
const examples = {
    GetCurrentWorkModeStatus: { currentWorkMode: 'Editing' },
    IsMontaneInstalledStatus: { installed: 1 },
    GetAssociatedFilesStatus: { fileList: [clip, '/media/day1/A001_C001.wav'] },
    SelectedAssetInfo: {
        selectedItemInfoList: [{ filePath: clip, aliasName: 'Harbour, wide', type: 1, assetID: asset }],
    },
    ExportResultInfo: { exportResultInfo: { projectFile: '/projects/harbour.prj', projectType: 'project' } },
    SendTagTemplateStatus: { tagTemplateResultList: [{ tagTemplateInfoID: 'template-1', result: 0 }] },
    WriteXMPToDiskStatus: { actionResultList: [{ assetID: asset, filePath: clip }] },
    DeleteAssetStatus: { actionResultList: [{ assetID: asset, filePath: clip }] },
    UpdateXMPWithCustomDataStatus: { assetMediaInfoList: [info] },
    RefreshXMPStatus: { assetMediaInfoList: [info] },
    AssetDirty: { assetMediaInfoList: [info] },
    CloseAsset: { assetMediaInfoList: [info] },
    MarkerSelectionChanged: markers,
    MarkerChanged: markers,
    MarkerAdded: markers,
    MarkerDeleted: markers,
};

const answering = new Set(model.events.flatMap(({ answers = [] }) => answers));

/** @type {{identifier: string, name: string, isAnswer: boolean, example: object}[]} */
export const statuses = model.events
    .filter(({ kind, sent }) => kind === 'notification' && !(sent?.length > 0))
    .map(({ identifier }) => {
        const name = shortName(identifier);
        const isAnswer = answering.has(identifier);
        return { identifier, name, isAnswer, example: { ...(isAnswer && answer), ...examples[name] } };
    })
    .sort((one, other) => (one.name < other.name ? -1 : 1));

/** Names of examples that belong to no such notification: none, unless the protocol changed. */
export const leftOver = Object.keys(examples).filter(
    (name) => !statuses.some((status) => status.name === name),
);
