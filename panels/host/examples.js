// The callbacks of the ingest library, in the order of the interface: what each means, its arguments, and an
// example of them as session files have it. Where one can tell of a failure, `fails` has what differs.

const task = '7a5c0001-0000-4000-8000-000000000001';
const message = '3e550001-0000-4000-8000-000000000001';
const batch = 'ba7c0001-0000-4000-8000-000000000001';
const taskItem = '17e30001-0000-4000-8000-000000000001';
const asset = 'a55e0001-0000-4000-8000-000000000001';
const clip = '/media/day1/A001_C001.mov';
const error = -2147483648;
const denied = -1609629691;
const frame = 10160640000; // ticks, at 25 frames per second

const ingestItem = {
    filePath: clip,
    aliasName: 'Harbour, wide',
    clipFormat: 'MOV',
    startTime: 0,
    endTime: 300 * frame,
    frameRate: frame,
};
const metadata = {
    minimumMetadata: {
        namespaces: [
            { URI: 'http://purl.org/dc/elements/1.1/', prefix: 'dc', properties: [['title', 'Harbour']] },
        ],
        keywords: ['dawn', 'harbour'],
    },
};
const mediaInfo = {
    assetMediaType: 1,
    assetMediaInfoGUID: asset,
    mediaPath: clip,
    aliasName: 'Harbour, wide',
    xmpString: '<x:xmpmeta xmlns:x="http://ns.example.com/meta/"/>',
    createTime: '2024-05-06T05:40:00Z',
    lastModifyTime: '2024-05-06T05:52:10Z',
};
const assetItem = {
    assetMediaType: 1,
    mediaPath: clip,
    assetGUID: asset,
    assetMediaInfoGUID: asset,
    assetName: 'Harbour, wide',
    inPoint: 0,
    duration: 300 * frame,
};
const transferred = { src: clip, dst: '/backup/A001_C001.mov' };
const refused = { ...transferred, result: denied, errorMessage: 'The folder is read-only' };
const reported = {
    assetID: asset,
    filePath: clip,
    fileCreationTime: '2024-05-06T05:40:00Z',
    fileLastModificationTime: '2024-05-06T06:10:00Z',
};

const job = { task, message };
const batchOf = { task, batch };
const conversion = { code: error, error: 'The disk is full', 'output path': '' };

/** @type {{name: string, means: string, example: object, fails?: object}[]} Arguments by name, in order. */
export const callbacks = [
    { name: 'OnIngestStarted', means: 'An ingest begins.', example: { task } },
    { name: 'OnIngestFinished', means: 'An ingest is done.', example: { task } },
    { name: 'OnIngestCancelled', means: 'An ingest was cancelled.', example: { task } },
    { name: 'OnIngestPaused', means: 'Ingests stand still.', example: { tasks: [task] } },
    { name: 'OnIngestResumed', means: 'Ingests go on.', example: { tasks: [task] } },
    {
        name: 'OnIngestItemsReady',
        means: 'Clips of a batch are there, with what the user typed in.',
        example: { ...batchOf, 'task item': taskItem, items: [ingestItem], metadata },
    },
    {
        name: 'OnBackupItemsReady',
        means: 'Clips of a batch are in the backup, too.',
        example: { ...batchOf, items: [ingestItem], metadata },
    },
    {
        name: 'OnIngestBatchStarted',
        means: 'The clips for one bin begin to be copied.',
        example: { ...batchOf, 'target bin': 'Day 1' },
    },
    { name: 'OnIngestBatchFinished', means: 'The clips for one bin are copied.', example: batchOf },
    {
        name: 'OnInitMiniMetadata',
        means: 'The user shall type in what is known of clips.',
        example: { ...job, items: [ingestItem] },
    },
    {
        name: 'OnTranscodeStatus',
        means: 'A transcoding ended.',
        example: { ...job, code: 0, error: '', 'output path': '/media/preview/A001_C001.mp4' },
        fails: conversion,
    },
    {
        name: 'OnConcatenationStatus',
        means: 'A concatenation ended.',
        example: { ...job, code: 0, error: '', 'output path': '/media/day1/Harbour.mov' },
        fails: conversion,
    },
    {
        name: 'OnTranscodeProgress',
        means: 'How far a transcoding is.',
        example: { ...job, percentage: 50 },
    },
    {
        name: 'OnConcatenationProgress',
        means: 'How far a concatenation is.',
        example: { ...job, percentage: 50 },
    },
    {
        name: 'OnSaveAsset',
        means: 'An asset is to be saved in the library.',
        example: { ...job, 'media infos': [mediaInfo], item: assetItem, 'save flag': true },
    },
    {
        name: 'OnTriggerSaveAssetStatus',
        means: 'What became of a saving that a panel asked for.',
        example: { ...job, code: 0, error: '', 'media infos': [mediaInfo] },
        fails: { code: error, error: 'The project is read-only', 'media infos': [] },
    },
    {
        name: 'OnFileChanged',
        means: 'A file of the library changed on disk.',
        example: { ...job, 'media info': mediaInfo, code: 0 },
        fails: { code: error },
    },
    { name: 'OnFileOffLine', means: 'Files are gone.', example: { ...job, paths: [clip] } },
    {
        name: 'OnXMPChanged',
        means: 'The XMP of files changed.',
        example: { ...job, 'media infos': [mediaInfo] },
    },
    {
        name: 'OnMediaInfoChanged',
        means: 'What is known of media changed.',
        example: { ...job, 'media infos': [mediaInfo] },
    },
    {
        name: 'OnImportXMPFinished',
        means: 'A rough cut was read from disk.',
        example: {
            ...job,
            code: 0,
            batch,
            'task item': taskItem,
            'media infos': [mediaInfo],
            items: [assetItem],
        },
        fails: { code: error, 'media infos': [], items: [] },
    },
    {
        name: 'OnReadXMPFinished',
        means: 'The XMP of a file was read.',
        example: {
            ...job,
            code: 0,
            'media path': clip,
            'media info': asset,
            metadata: {},
            XMP: mediaInfo.xmpString,
            'create time': mediaInfo.createTime,
            'last modify time': mediaInfo.lastModifyTime,
            batch,
            'task item': taskItem,
            errors: [],
            context: null,
        },
        fails: { code: error, XMP: null, errors: [{ message: 'The file cannot be read' }] },
    },
    {
        name: 'OnRequestThumbnailStatus',
        means: 'A thumbnail is there.',
        example: {
            ...job,
            code: 0,
            'clip path': clip,
            asset,
            'start time': 50 * frame,
            'thumb path': '/cache/thumbs/A001_C001.png',
            batch,
            'task item': taskItem,
        },
        fails: { code: error, 'thumb path': '' },
    },
    {
        name: 'OnTransferProgress',
        means: 'How far a transfer is.',
        example: { ...job, percentage: 50 },
    },
    {
        name: 'OnTransferStatus',
        means: 'A transfer ended.',
        example: { ...job, code: 0, results: [transferred] },
        fails: { code: error, results: [refused] },
    },
    {
        name: 'OnRenameStatus',
        means: 'Files were renamed.',
        example: { ...job, code: 0, results: [{ src: clip, dst: '/media/day1/Harbour.mov' }] },
        fails: { code: error, results: [{ ...refused, dst: '/media/day1/Harbour.mov' }] },
    },
    {
        name: 'OnGetMediaPropertyInfoStatus',
        means: 'Rate and length of a file.',
        example: {
            ...job,
            code: 0,
            info: { assetID: asset, filePath: clip, frameRate: frame, startTime: 0, duration: 300 * frame },
        },
        fails: { code: error, info: { assetID: asset, filePath: clip } },
    },
    { name: 'OnGetTargetBinPath', means: 'The bin that is the target is asked for.', example: job },
    {
        name: 'OnXMPFileTimeChanged',
        means: 'Writing XMP changed the time of files.',
        example: { ...job, code: 0, results: [reported] },
        fails: { code: denied, results: [{ ...reported, result: denied, errorMessage: 'Access denied' }] },
    },
];

const byName = new Map(callbacks.map((callback) => [callback.name, callback]));

/** @returns The row of a callback; undefined without one. */
export const findCallback = (name) => byName.get(name);

/** @returns {string[]} What the arguments of a callback are. */
export const labelsOf = (name) => Object.keys(byName.get(name)?.example ?? {});

/**
 * @param {string} name A callback.
 * @param {object} [values] Arguments that differ from the example, by their names; others are ignored.
 * @returns {unknown[]} Arguments as session files have them.
 */
export const argumentsOf = (name, values = {}) =>
    Object.entries(byName.get(name).example).map(([label, example]) =>
        Object.hasOwn(values, label) ? values[label] : example,
    );
