// The page of an author, in a folder that the desk is started with.

import assert from 'node:assert/strict';
import { mkdtemp, rm, writeFile } from 'node:fs/promises';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after } from 'node:test';
import { journey, tellClips } from './desk.mjs';

const folder = await mkdtemp(join(tmpdir(), 'panel-'));
after(() => rm(folder, { recursive: true }));

const write = (name, text) => writeFile(join(folder, name), text);
const script = (word) => `
    import { Panel, connectWebSocket } from '/client/index.js';
    const transport = await connectWebSocket('ws://' + location.host + '/socket', { kind: 'library' });
    const panel = new Panel(transport, { kind: 'library' });
    const show = (text) => document.body.append(document.createTextNode(text));
    panel.on('IngestItemsReady', ({ ingestItemList: [{ filePath }] }) => show('${word}: ' + filePath + '. '));
    show('${word} as ' + transport.browserID + '. ');`;

await write('index.html', `<!doctype html><title>Mine</title><body>
    <script>document.body.append('inline');</script><script type="module" src="index.js"></script>`);
await write('index.js', script('First'));

journey('the page of an author', ['--panel', folder], async (desk) => {
    await desk.openConnected('/traffic/');
    const traffic = await desk.openConnected('/traffic/');
    const { tool } = desk;
    const panel = await desk.open('/panel/');
    await panel.getByText('First as panel-').waitFor();
    assert.equal(await panel.getByText('inline').count(), 0);
    await traffic.getByRole('grid', { name: 'Traffic' }).getByText(/^policy: .*script/).first().waitFor();
    await tellClips(tool, ['/media/one.mov']);
    await panel.getByText('First: /media/one.mov.').waitFor();

    await write('index.js', script('Second'));
    await panel.getByText('Second as panel-').waitFor();
    await tellClips(tool, ['/media/two.mov']);
    await panel.getByText('Second: /media/two.mov.').waitFor();
    desk.forgive(/inline script/);
});
