// Notifications beside the records that they were made from.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { parseNotification, resultNames, ticksPerSecond } from '../../panels/client/index.js';
import { isDecoded } from '../../panels/client/rules.js';
import { jsonOf, run, session } from './program.mjs';

const sessions = ['callbacks', 'exceptions', 'ingest-media', 'library-day', 'media-collection-day',
    'requests'];
const host = 'com.velmo.host.notification.';

/** Texts in which a value looks like the markup behind it, so that it is cut there. None is in a session. */
const ambiguous = {
    'its own end tag and a further element': ['name', 'a</name><type>b'],
    'a quote and the end of the tag, with what follows it':
        ['parentBinPath', 'a"/><assetMetadata>b</assetMetadata><relativePath path="c'],
};

/** The encoder leaves null entries out and goes on counting; of paths without text it writes the list. */
function withoutNulls(text) {
    const counts = [];
    return text.replace(/<assetItemList>|<\/assetItemList>|<assetItem order="\d+"/g, (tag) => {
        if (tag.startsWith('</'))
            counts.pop();
        else if (tag === '<assetItemList>')
            counts.push(0);
        else
            return `<assetItem order="${++counts[counts.length - 1]}"`;
        return tag;
    }).replace('<extraPathList/>', '');
}

const encoded = (record, type, text) =>
    run(jsonOf(record), 'encode', ...(isDecoded(type, text) ? ['--decoded'] : [])).replace(/\n$/, '');

test('every notification of the sessions gives the record that it was made from', () => {
    const sent = new Map(sessions.flatMap(session).filter((line) => line.notification !== undefined)
        .map((line) => [line.notification + line.data, line]));
    assert.ok(sent.size > 100);
    for (const { notification, data } of sent.values()) {
        const text = encoded(parseNotification(notification, data), notification, data);
        assert.equal(text, withoutNulls(data), notification);
    }
});

test('values that look like markup are told from it by the vocabulary', () => {
    const values = ['Clip "A"', 'a "b" c="d"', '" >', "'", '<', '</', 'a < b & c > d', '<!-- x', '<![CDATA[',
        ']]>', '<name>', '</name>', 'x</name>y', '<b>bold</b>', '&lt;', '&amp;lt;', '?>', '\r',
        '</hostNotification>', ' "/> '];
    for (const value of values) {
        const item = { assetName: value, mediaPath: value, parentBinPath: value, assetMetadata: value };
        const info = { fileContent: value, aliasName: value, xmpString: value, customMetadata: value };
        const texts = { errorInfo: value, result: value };
        const assetItemList = [item, { ...item, subAssetItemList: [item] }];
        const space = { URI: value, prefix: value, properties: [['a', value], ['b', value]] };
        const customMetadata = { minimumMetadata: { namespaces: [space, space], keywords: [value] } };
        const record = { assetMediaInfoList: [info, info], assetItemList, customMetadata, ...texts };
        for (const type of [`${host}SaveAsset`, `${host}TransferStatus`]) {
            const args = type.endsWith('SaveAsset') ? ['--decoded'] : [];
            const text = run(jsonOf(record), 'encode', ...args);
            const back = parseNotification(type, text);
            assert.deepEqual(back.customMetadata.minimumMetadata.namespaces, [space, space], value);
            assert.deepEqual(back.customMetadata.minimumMetadata.keywords, [value]);
            for (const [part, wanted] of [[back.assetItemList[1].subAssetItemList[0], item],
                [back.assetMediaInfoList[1], info], [back, texts]])
                for (const name of Object.keys(wanted))
                    assert.equal(part[name], value, `${name} of ${type}`);
        }
    }
    for (const [what, [element, value]] of Object.entries(ambiguous)) {
        const member = element === 'name' ? 'assetName' : element;
        const record = { assetItemList: [{ [member]: value }] };
        const back = parseNotification(`${host}SaveAsset`, run(jsonOf(record), 'encode', '--decoded'));
        assert.notEqual(back.assetItemList[0][member], value, what);
        const plain = parseNotification('', run(jsonOf(record), 'encode'));
        assert.equal(plain.assetItemList[0][member], value, what);
    }
});

test('texts of other hosts are read as the host reads theirs', () => {
    const read = (content) => parseNotification('', `<?xml version="1.0"?>\n<!-- x -->\n<n>${content}</n>`);
    for (const [content, expected] of [
        ["<result\n>O<!-- x -->K</result ><unknown a='>'><result>no</result></unknown>", { result: 'OK' }],
        ['<result>1</result><result>2</result>', { result: '1' }],
        ['<result><![CDATA[a<b&lt;]]></result><filePath path=\'a"b&#x41;&#65;&amp;#65;\' x="y"/>',
            { result: 'a<b&lt;', filePath: 'a"bAA&#65;' }],
        ['<percentage>40 %</percentage><allowExit>True</allowExit>', { percentage: 40, allowExit: 0 }],
        ['<percentage>9999999999</percentage><taskIDList><taskID ID="x"/></taskIDList>',
            { percentage: 0, taskIDList: ['00000000-0000-0000-0000-000000000000'] }],
    ]) {
        const { header, ...record } = read(content);
        assert.deepEqual(record, expected, content);
    }
    const copy = '<assetID ID=""/><result>Perhaps</result>';
    assert.deepEqual(read(`<actionResultList><actionResult>${copy}</actionResult></actionResultList>`)
        .actionResultList.map(({ result }) => resultNames.get(result)), ['ERROR']);
    const odd = '<n><errorInfo x="1">a</errorInfo></n>';
    assert.equal(parseNotification(`${host}SaveAsset`, odd).errorInfo, 'a');
    const [item] = read('<ingestItemList><ingestItem><duration>3</duration><startTime>2</startTime>' +
        '<frameRate>f24</frameRate></ingestItem></ingestItemList>').ingestItemList;
    const frame = ticksPerSecond / 24n;
    assert.deepEqual([item.frameRate, item.startTime, item.endTime], [frame, 2n * frame, 5n * frame]);
});

const deep = (items) => `<n>${'<assetItemList><assetItem>'.repeat(items)}` +
    `${'</assetItem></assetItemList>'.repeat(items)}</n>`;

test('garbage is refused in time that grows with it alone', () => {
    const times = 200000;
    assert.equal(parseNotification('', deep(2047)).assetItemList.length, 1, 'as deep as the host reads');
    for (const [what, text] of Object.entries({
        nothing: '', text: 'x', tag: '<', cut: '<n><result>OK', attribute: '<n><filePath path="a',
        comment: '<n><!--', 'end tag': '<n></m>', open: '<name>'.repeat(times),
        items: `<n><assetItemList>${'<assetItem>'.repeat(times)}`,
        deep: deep(2048),
        ends: `<n><errorInfo>${'</errorInfo>x'.repeat(times)}`,
        quotes: `<n><filePath path="${'" '.repeat(times)}`,
        'texts without end': `<n>${'<errorInfo></errorInfo>x'.repeat(times)}`,
        spaces: `<n><result>${' '.repeat(times)}`,
    }))
        for (const type of ['', `${host}SaveAsset`]) {
            const begin = performance.now();
            assert.throws(() => parseNotification(type, text), { code: 'garbled' }, what);
            assert.ok(performance.now() - begin < 2000, `${what}: ${performance.now() - begin} ms`);
        }
});
