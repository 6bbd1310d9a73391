// The library panel without its page: what notifications do to the clips, and what its requests hold.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { buildRequest, parseNotification, rateOf, ticksPerSecond } from '../../panels/client/index.js';
import { ClipList, adviceOf, listed, stateOf } from '../../panels/library/clips.js';
import * as requests from '../../panels/library/requests.js';
import { recordOf, run, session } from './program.mjs';

const day = session('library-day');
const shortName = (identifier) => identifier.split('.').at(-1);

function clipsOfTheDay() {
    const clips = new ClipList();
    for (const { notification, data } of day.filter((line) => line.notification !== undefined))
        clips.hear(shortName(notification), parseNotification(notification, data));
    return clips;
}

/** The record that the library reads, without the header, which the page makes. */
function readBack(text) {
    const { header, ...record } = recordOf(run(text, 'decode'));
    return record;
}

test('the day gives its clips', () => {
    const second = ticksPerSecond;
    const shown = clipsOfTheDay().all.map(({ path, name, bin, start, length, ...rest }) => [
        path, name, bin, start / second, length / second, rest.infoID?.slice(0, 8), rest.xmp !== undefined,
        rest.extraPaths, rest.metadata,
    ]);
    const metadata = [['creator', 'Ana Ruiz'], ['title', 'Harbour at dawn'], ['Keywords', 'dawn, harbour']];
    assert.deepEqual(shown, [
        ['/media/day1/A001_C001.mov', 'Harbour, wide', 'Day 1', 0n, 12n, 'a55e0001', true, [], metadata],
        ['/media/day1/A001_C002.mov', 'Harbour, boats', 'Day 1', 10n, 15n, undefined, false,
            ['/media/day1/A001_C002.wav'], metadata],
    ]);
});

test('the requests of the day are what the panel makes', () => {
    const clips = clipsOfTheDay();
    const [wide, boats] = clips.all;
    clips.made('/media/preview/A001_C001_preview.mp4', { from: wide.path });
    const preview = clips.get('/media/preview/A001_C001_preview.mp4');
    const made = {
        OpenIngestDialog: { targetBin: 'Day 1' },
        ImportXMP: requests.importXmp(wide),
        RequestThumbnail: requests.thumbnail(wide, 2n * ticksPerSecond),
        TranscodeRequest: requests.transcode([wide], { preset: '/presets/preview.xml',
            folder: '/media/preview', name: 'A001_C001_preview.mp4', withXmp: false }),
        TransferRequest: requests.transfer([preview], { where: 'ftp', folder: '/incoming', overwrite: true,
            server: 'ftp.example.com', port: '21', user: 'harbour', password: '***' }),
        RenameRequest: requests.rename(boats, 'Harbour_boats.mov'),
        ExitApp: { allowExit: 0 },
    };
    const raised = day.filter(({ panel }) => panel !== undefined);
    assert.deepEqual(Object.keys(made), raised.map(({ panel }) => shortName(panel)));
    for (const { panel, data } of raised) {
        const { taskItemID, batchID, ...record } = readBack(buildRequest(made[shortName(panel)]));
        const { taskItemID: item, batchID: batch, ...expected } = readBack(data);
        assert.deepEqual(record, expected, panel);
        if (item !== undefined) assert.deepEqual([taskItemID, batchID], [item, batch], panel);
    }
});

test('a range is told where it is one of whole frames', () => {
    const clip = { path: '/a', rate: rateOf(25), start: 0n, length: ticksPerSecond };
    assert.deepEqual(Object.keys(requests.rangeOf(clip)), ['filePath', 'frameRate', 'startTime', 'duration']);
    const values = { preset: '', folder: '', ending: '.mp4', withXmp: true };
    for (const change of [{ rate: undefined }, { start: undefined }, { length: 1n }, { start: 1n }]) {
        assert.deepEqual(requests.rangeOf({ ...clip, ...change }), { filePath: '/a' });
        buildRequest(requests.transcode([{ ...clip, ...change }], values));
    }
});

const info = (mediaPath, more = {}) => ({ mediaPath, assetMediaType: 1, assetMediaInfoGUID: '',
    aliasName: '', ...more });

test('news change what stands of a clip, and reading it makes it good', () => {
    const path = '/media/day1/A001_C001.mov';
    const fault = { filePath: path, result: -2147483648, errorMessage: 'The file is gone.' };
    const read = { assetMediaInfoList: [info(path, { xmpString: '<x/>' })], result: 'OK' };
    const steps = [
        ['FileChanged', { assetMediaInfoList: [info(path)], result: 'OK' }, 'Changed on disk'],
        ['FileChanged', { assetMediaInfoList: [info(path)], result: 'ERROR' }, 'Not reachable'],
        ['ImportXMPStatus', read, 'Ready'],
        ['XMPChanged', { assetMediaInfoList: [info(path, { xmpString: '<y/>' })] }, 'XMP changed'],
        ['ReadXMPFromDiskStatus', read, 'Ready'],
        ['ImportXMPStatus', { actionResultList: [fault], result: 'ERROR' }, '', /The file is gone\. Check/],
        ['IngestItemsReady', { ingestItemList: [{ filePath: path }] }, 'Ready'],
        ['XMPFileTimeChanged', { actionResultList: [{ ...fault, result: 0,
            fileLastModificationTime: 'now' }] }, 'Ready'],
        ['ImportXMPStatus', { assetMediaInfoList: [info(path)], result: 'ERROR' }, '', /Read XMP failed/],
    ];
    const clips = clipsOfTheDay();
    for (const [name, message, state, advice] of steps) {
        assert.equal(clips.hear(name, message), true);
        const clip = clips.get(path);
        assert.equal(stateOf(clip).text, state, name);
        assert.match(adviceOf(clip), advice ?? (state === 'Ready' ? /^$/ : /./), name);
        assert.equal(clip.name, 'Harbour, wide', 'names that connectors make from paths replace none');
    }
    assert.equal(clips.get(path).modified, 'now');
    assert.equal(clips.get(path).xmp, '<x/>');
    assert.equal(clips.hear('TransferStatus', {}), false);
    for (const name of ['ImportXMPStatus', 'XMPChanged', 'FileChanged', 'SaveAsset', 'IngestItemsReady',
        'BackupItemsReady', 'XMPFileTimeChanged'])
        for (const entry of [{}, { mediaPath: '', filePath: '' }])
            clips.hear(name, { assetMediaInfoList: [entry], assetItemList: [entry], ingestItemList: [entry],
                actionResultList: [entry] });
    assert.equal(clips.all.length, 2, 'what has no path is no clip');
});

test('files move and copies come', () => {
    const clips = clipsOfTheDay();
    const [wide, boats] = clips.all;
    const renaming = (src, dst, result = 0) => clips.renamed({ transferResultList: [{ src, dst, result }] });
    renaming(boats.path, '/media/day1/b.mov', -2147483648);
    assert.equal(clips.get(boats.path).path, boats.path);
    renaming(boats.path, '/media/day1/b.mov');
    renaming('/unknown', '/media/day1/c.mov');
    assert.deepEqual(clips.all.map(({ key, name }) => [key, name]),
        [[wide.path, 'Harbour, wide'], ['/media/day1/b.mov', 'Harbour, boats']]);
    renaming('/media/day1/b.mov', wide.path);
    assert.deepEqual(clips.all.map(({ key }) => key), [wide.path], 'one file, one clip');

    const copy = { ingestItemList: [{ filePath: '/backup/A001_C001.mov' }, { filePath: '/backup/x.mov' }],
        batchID: wide.batchID };
    const again = clipsOfTheDay();
    again.hear('BackupItemsReady', copy);
    again.hear('BackupItemsReady', copy);
    assert.deepEqual(again.all.map(({ path, copies }) => [path, copies.length]),
        [[wide.path, 1], [boats.path, 0], ['/backup/x.mov', 0]]);
    again.propertiesCame({ mediaPropertyInfo: { filePath: '', assetID: wide.infoID, duration: 5n,
        frameRate: 1n } });
    again.thumbnailCame({ thumbnailRequest: { clipPath: wide.path, thumbPath: '/t.png' } });
    const { length, rate, thumbnail } = again.get(wide.path);
    assert.deepEqual([length, rate, thumbnail], [5n, rateOf(25), '/t.png']);
});

test('clips are found and put in order', () => {
    const clips = clipsOfTheDay().all;
    const names = (how) => listed(clips, how).map(({ name }) => name.slice(9));
    for (const [how, expected] of [
        [{}, ['wide', 'boats']],
        [{ search: 'BOATS harbour' }, ['boats']],
        [{ search: 'dawn c001' }, ['wide']],
        [{ search: 'nowhere' }, []],
        [{ key: 'name' }, ['boats', 'wide']],
        [{ key: 'length', descending: true }, ['boats', 'wide']],
        [{ key: 'bin', descending: true }, ['wide', 'boats']],
    ])
        assert.deepEqual(names(how), expected, JSON.stringify(how));
});
