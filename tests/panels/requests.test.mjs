// What the client builds, beside what the program reads in it.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { Panel, buildRequest } from '../../panels/client/index.js';
import { build } from '../../panels/client/build.js';
import { jsonOf, recordOf, run } from './program.mjs';

const model = JSON.parse(readFileSync(process.env.PROTOCOL_MODEL, 'utf8'));
const zero = '00000000-0000-0000-0000-000000000000';
const escaped = (text) => text.replace(/[&<>"]/g, (unit) => `&#${unit.charCodeAt(0)};`);

/** @returns {string} A text with every place of requests, but for those that others hide. */
function everything(isLeftOut, prefix = '', depth = 0) {
    const inside = (path) => model.places.filter((place) => place.read && !isLeftOut(place) &&
        place.path.startsWith(path) && /^[^/@]+$/.test(place.path.slice(path.length)));
    const elements = inside(prefix).map((place) => {
        const name = place.path.slice(prefix.length).replace('*', 'scene');
        const attributes = inside(`${place.path}@`).map((attribute) =>
            ` ${attribute.path.split('@')[1]}="${escaped(attribute.sample)}"`).join('');
        const content = place.sameAs !== undefined && depth < 3
            ? everything(isLeftOut, `${place.sameAs}/`, depth + 1)
            : escaped(place.sample ?? '') + everything(isLeftOut, `${place.path}/`, depth);
        return `<${name}${attributes}>${content}</${name}>`;
    });
    return elements.join('');
}

const decoded = (text) => recordOf(run(text, 'decode'));
const without = (isLeftOut) => decoded(`<browserMessage>${everything(isLeftOut)}</browserMessage>`);
const full = without((place) => place.hiddenBy !== undefined);

test('every request with every element means what its record says', async () => {
    const handles = model.events.filter(({ kind }) => kind === 'request').map(({ identifier }) => identifier);
    assert.equal(handles.length, 44);
    const raised = [];
    const panel = new Panel({ raise: (...request) => raised.push(request), hear: () => {}, handles });
    const answers = handles.map((identifier) => panel.request(identifier, { ...full, header: undefined }));
    panel.close();
    await Promise.allSettled(answers);
    assert.deepEqual(raised.map(([type]) => type), handles);
    for (const [type, text] of raised) {
        const { header, ...record } = decoded(text);
        assert.ok(header.msgID !== zero && header.taskID !== zero, type);
        assert.deepEqual({ ...record, header: full.header }, full, type);
    }
});

test('every place of requests is built', () => {
    const hidden = without((place) => place.path.endsWith('@dst'));
    const transferItemList = [...full.transferItemList, ...hidden.transferItemList];
    const [info] = full.assetMediaInfoList;
    const assetMediaInfoList = [{ ...info, forceLoadFromLocalDisk: 0 }];  // it is read as not set
    const { places } = build({ ...full, transferItemList, assetMediaInfoList });
    const missing = model.places.filter(({ read, path }) => read && !places.has(path));
    assert.deepEqual(missing.map(({ path }) => path), []);
    assert.deepEqual(decoded(buildRequest(hidden)), hidden);
});

test('odd values arrive as they are', () => {
    const odd = ['', ' ', 'a\r\nb\tc', '<>&"\'', '&lt;', ']]>', 'é \u{1F600}', '<![CDATA[x]]>', '&#65;'];
    const assetItemList = odd.map((text, i) => ({
        ...full.assetItemList[0], assetName: text, mediaPath: text, assetMetadata: text, parentBinPath: text,
        inPoint: 2n ** 62n + BigInt(i), duration: -1n, customInPoint: null, subAssetItemList: [],
    }));
    const transcodeItemList = [25n, 1n, 10160640000n, 8475133867n, -7n].map((frameRate) => ({
        ...full.transcodeItemList[0], frameRate, startTime: 12345n * frameRate, duration: null }));
    const [info] = full.assetMediaInfoList;
    const assetMediaInfoList = odd.map((text) => ({ ...info, xmpString: text, customMetadata: text }));
    const record = { ...full, assetItemList, transcodeItemList, assetMediaInfoList };
    const back = decoded(buildRequest(record));
    assert.deepEqual(back.assetMediaInfoList, decoded(run(jsonOf(record), 'encode')).assetMediaInfoList);
    assert.deepEqual(back.assetItemList, assetItemList);
    assert.deepEqual(back.transcodeItemList, transcodeItemList);
});

test('what no request can say is refused, with its place', () => {
    for (const [record, message] of [
        [{ fileLists: [] }, /^fileLists is no member of Message/],
        [{ fileList: '/a' }, /^fileList is not an array/],
        [{ assetItemList: [{ inPoint: 5 }] }, /^assetItemList\[0\]\.inPoint is not null or a bigint/],
        [{ assetItemList: [{ inPoint: 2n ** 63n }] }, /inPoint is not null or a bigint of 64 bits/],
        [{ batchID: 'x' }, /^batchID is not a GUID/],
        [{ newDynamicColumns: [zero] }, /^newDynamicColumns\[0\] is not a pair/],
        [{ percentage: 0.5 }, /^percentage is not an integer/],
        [{ transcodeItemList: [{ frameRate: 10160640000n, startTime: 1n }] }, /startTime is no whole number/],
        [{ customMetadata: { minimumMetadata: { namespaces: [{ properties: [['a b', '']] }] } } },
            /"a b" cannot/],
    ])
        assert.throws(() => buildRequest(record), { code: 'invalid', message });
    const cycle = {};
    cycle.subAssetItemList = [cycle];
    assert.throws(() => buildRequest({ assetItemList: [cycle] }), { code: 'invalid', message: /lists deep/ });
    assert.equal(buildRequest({ assetItemList: [{ inPoint: 2n }, {}] }),
        '<browserMessage><assetItemList><assetItem order="1"><startTime>2</startTime>' +
        '<frameRate>f254016000000</frameRate></assetItem><assetItem order="2"/></assetItemList>' +
        '</browserMessage>');
    const nothing = buildRequest({ fileList: undefined, assetItemList: [null], filePath: 'a\0\ud800' });
    assert.equal(decoded(nothing).filePath, 'a\ufffd\ufffd');
});
