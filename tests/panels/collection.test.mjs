// The media collection panel without its page: the tree, the columns, and what its requests hold.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { buildRequest, parseNotification, rateOf, ticksPerSecond } from '../../panels/client/index.js';
import { AssetTree } from '../../panels/collection/assets.js';
import { Columns } from '../../panels/collection/columns.js';
import * as requests from '../../panels/collection/requests.js';
import { recordOf, run, session } from './program.mjs';

const day = session('media-collection-day');
const shortName = (identifier) => identifier.split('.').at(-1);

function treeOfTheDay() {
    const tree = new AssetTree();
    for (const { notification, data } of day.filter((line) => line.notification !== undefined)) {
        const message = parseNotification(notification, data);
        const isHeard = tree.hear(shortName(notification), message);
        if (!isHeard && notification.includes('ReadXMP')) tree.xmpCame(message);
    }
    return tree;
}

const open = { isShut: () => false };
const shown = (tree, how = open) =>
    tree.rows(how).map(({ node, level, expanded }) =>
        `${'  '.repeat(level)}${node.name}${{ true: ' -', false: ' +' }[expanded] ?? ''}`);

test('the day gives its tree', () => {
    const tree = treeOfTheDay();
    const all = ['Pier', 'Harbour, wide', 'First cut -', '  Pier', '  Pier, sky'];
    assert.deepEqual(shown(tree), all);
    assert.deepEqual(tree.rows(open).map(({ node }) => [node.type, node.xmp !== undefined]),
        [[1, true], [1, true], [3, false], [4, false], [4, false]]);
    for (const [how, expected] of [
        [{ isShut: () => true }, ['Pier', 'Harbour, wide', 'First cut +']],
        [{ ...open, search: 'sky' }, ['First cut -', '  Pier, sky']],
        [{ isShut: () => true, search: 'sky' }, ['First cut -', '  Pier, sky']],
        [{ ...open, search: 'arcut' }, ['First cut -']],
        [{ ...open, sortedBy: ({ name }) => name, descending: true },
            ['Pier', 'Harbour, wide', 'First cut -', '  Pier, sky', '  Pier']],
        [{ ...open, sortedBy: ({ length }) => length ?? -1n },
            ['Harbour, wide', 'First cut -', '  Pier, sky', '  Pier', 'Pier']],
    ])
        assert.deepEqual(shown(tree, how), expected, JSON.stringify(how));
    const [, , cut] = tree.rows(open);
    assert.equal(tree.rateOf(cut.node), rateOf(25), 'a cut counts like its clips');
});

const cut = { mediaPath: '/cut', assetMediaType: 3, subAssetItemList: [] };
const item = (assetGUID, more) => ({ ...cut, assetGUID, assetName: assetGUID, ...more });

test('a save says what is in an asset now', () => {
    const tree = new AssetTree();
    const save = (...assetItemList) => tree.hear('SaveAsset', { assetItemList });
    const part = (id, more) => item(id, { mediaPath: '/clip', assetMediaType: 4, ...more });
    const steps = [
        [[item('cut', { subAssetItemList: [part('a'), null, part('b')] })], ['cut -', '  a', '  b']],
        [[item('cut', { subAssetItemList: [part('b'), part('c')] })], ['cut -', '  b', '  c']],
        [[part('d', { parentGUID: 'cut' })], ['cut -', '  b', '  c', '  d']],
        [[part('d', { parentGUID: 'cut' })], ['cut -', '  b', '  c', '  d']],
        [[item('again')], ['again']],
        [[item('sub', { assetMediaType: 2, mediaPath: '/clip' })], ['again', 'sub']],
    ];
    for (const [items, expected] of steps) {
        save(...items);
        assert.deepEqual(shown(tree), expected);
    }
    tree.hear('IngestItemsReady', { ingestItemList: [{ filePath: '/clip', aliasName: 'clip' }] });
    tree.hear('IngestItemsReady', { ingestItemList: [{ filePath: '/clip', aliasName: 'clip' }] });
    assert.deepEqual(shown(tree), ['again', 'sub', 'clip'], 'a part of a file is not the file');
    tree.xmpCame({ assetMediaInfoList: [{ mediaPath: '/clip', assetMediaType: 1, xmpString: '<x/>' }] });
    assert.deepEqual(tree.rows(open).map(({ node }) => [node.type, node.xmp]), [[3, undefined], [2, '<x/>'],
        [1, '<x/>']]);
});

test('nothing stands in itself, or twice under one key', () => {
    const tree = new AssetTree();
    const item = (assetGUID, more = {}) =>
        ({ assetMediaType: 1, mediaPath: `/${assetGUID}`, assetGUID, assetName: assetGUID, ...more });
    const inIt = (assetGUID, ...subAssetItemList) => item(assetGUID, { subAssetItemList });
    const inParent = (assetGUID, parentGUID) => item(assetGUID, { parentGUID });
    for (const [told, expected] of [
        [item('a'), 'a'],
        [inParent('b', 'a'), 'a>b'],
        [inParent('a', 'b'), 'a'],
        [inParent('c', 'c'), 'a c'],
        [inParent('c', 'c'), 'a c'],
        [inIt('a', item('a'), item('c'), item('d'), item('d')), 'a>a>c>d>d c'],
        [inParent('c', 'a'), 'a>a>c>d>d>c'],
        [inParent('d', 'c'), 'a>a>c>d>c>>d'],
        [inIt('a', item('c')), 'a>c'],
        [item('', { mediaPath: '', assetName: '' }), 'a>c'],
        [item('', { mediaPath: '/x/', assetName: '' }), 'a>c /x/'],
    ]) {
        tree.hear('SaveAsset', { assetItemList: [told] });
        const rows = tree.rows(open);
        const texts = rows.map(({ node, level }) => `${'>'.repeat(level) || ' '}${node.name}`);
        assert.equal(texts.join('').trim(), expected);
        assert.equal(new Set(rows.map(({ key }) => key)).size, rows.length, expected);
    }
});

test('the requests of the day are what the panel makes', () => {
    const tree = treeOfTheDay();
    const [pier, wide, cut] = tree.rows(open).map(({ node }) => node);
    const scene = 'c0100001-0000-4000-8000-000000000001';
    const shot = 'c0100002-0000-4000-8000-000000000002';
    const id = 'a55e0002-0000-4000-8000-000000000002';
    const known = { ...pier, infoID: id, id };
    const added = requests.insertColumn(scene, 'Scene');
    const renamed = requests.insertColumn(shot, 'Shot', 'Take');
    const newDynamicColumns = [...added.newDynamicColumns, ...renamed.newDynamicColumns];
    const made = {
        IngestMedia: requests.ingest({ paths: '/media/day1/A002_C001.mov\n /media/day1/A002_C002.mov \n',
            isCopied: true, copyTo: '/backup/day1', isVerified: true, mode: 'MD5' }),
        ReadXMPFromCache: requests.readXmp([wide]),
        ReadXMPFromDisk: requests.readXmp([known, { ...cut, content: undefined }]),
        InsertDynamicColumns: { ...renamed, newDynamicColumns },
        UpdateDynamicColumnFields: requests.fillFields(known.id, [[scene, '12A']]),
        DeleteDynamicColumns: requests.deleteColumn(shot),
        ReportEvent: requests.report({ level: 'warn', text: 'The backup is nearly full.', isShown: true }),
    };
    const raised = day.filter(({ panel }) => panel !== undefined);
    assert.deepEqual(Object.keys(made), raised.map(({ panel }) => shortName(panel)));
    const readBack = (text) => ({ ...recordOf(run(text, 'decode')), header: undefined });
    for (const { panel, data } of raised)
        assert.deepEqual(readBack(buildRequest(made[shortName(panel)])), readBack(data), panel);
});

test('what is saved or exported comes whole, each file once', () => {
    const tree = treeOfTheDay();
    const cut = tree.rows(open)[2].node;
    const content = requests.exportAssets([cut], (key) => tree.get(key));
    buildRequest(content);
    assert.deepEqual(content.assetMediaInfoList.map(({ mediaPath }) => mediaPath),
        ['/projects/cut1.arcut', '/media/day1/A002_C001.mov']);
    const [{ assetName, duration, subAssetItemList }] = content.assetItemList;
    assert.deepEqual([assetName, duration], ['First cut', 5n * ticksPerSecond]);
    assert.deepEqual(subAssetItemList.map((item) => [item.assetName, item.inPoint, item.parentGUID]),
        [['Pier', 0n, cut.id], ['Pier, sky', 6n * ticksPerSecond, cut.id]]);
});

test('files that the host would look for elsewhere are told before', () => {
    for (const [text, isRight] of [
        ['/m/a.mov', true], ['/m/a.mov\nb.mov\n\n/m/c.mov', true], ['D:\\m\\a.mov\nD:\\m\\b.mov', true],
        ['', false], ['a.mov', false], ['/m/a.mov\n/n/b.mov', false],
    ])
        assert.equal(requests.pathsProblem(text) === undefined, isRight, text);
});

test('columns are what the host lists, values stay with theirs', () => {
    const columns = new Columns();
    columns.put('a', 'Scene');
    columns.put('b', 'Take');
    columns.fill('x', [['a', '12A'], ['b', '3']]);
    columns.fill('x', [['a', '12B']]);
    columns.put('b', 'Shot');
    assert.deepEqual(columns.all, [{ id: 'a', name: 'Scene' }, { id: 'b', name: 'Shot' }]);
    assert.deepEqual(['scene ', 'Shot', 'Take'].map((name) => columns.problemOf(name, 'b') === undefined),
        [false, true, true]);
    columns.heardState([{ id: 'B', name: 'Shot' }, { id: 'c', name: 'Roll' }]);
    columns.heardState([{ id: 'a', name: 'Scene' }, { id: 'b', name: 'Shot' }]);
    assert.deepEqual([columns.valueOf('x', 'a'), columns.valueOf('x', 'b'), columns.valueOf('y', 'b')], ['',
        '3', '']);
});
