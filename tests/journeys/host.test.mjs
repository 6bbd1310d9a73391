// The host page: the end of the host, a callback by hand, and a selection of the traffic as a session file.

import assert from 'node:assert/strict';
import { execFile } from 'node:child_process';
import { promisify } from 'node:util';
import { button, connectionOf, journey, rowOf, shoot, tellClips } from './desk.mjs';

const clip = '/media/day1/A001_C001.mov';

async function exit(host) {
    await button(host, 'Exit').click();
    await button(host.getByRole('dialog', { name: 'Exit the host?' }), 'Exit the host').click();
}

journey('the end of the host is refused, then granted', [], async (desk) => {
    const [library, host] = [await desk.openConnected('/library/'), await desk.openConnected('/host/')];
    await library.getByLabel('Keep open').check();
    await exit(host);
    await library.getByText('The host was told not to end: “Keep open” is ticked.').waitFor();
    await host.getByText('Refused by panel-1: the host goes on.').waitFor();
    await shoot(host, 'host-refused');

    await library.getByLabel('Keep open').uncheck();
    await exit(host);
    assert.equal(await desk.exitCode, 0);
    for (const page of [library, host]) await connectionOf(page, 'waiting');
    desk.forgive(/ERR_CONNECTION_REFUSED/);
});

journey('a callback by hand reaches the library', [], async (desk) => {
    const [library, host] = [await desk.openConnected('/library/'), await desk.openConnected('/host/')];
    await host.getByLabel('Callback of the ingest library').selectOption('OnIngestItemsReady');
    const args = host.getByLabel('Arguments, as session files have them');
    const example = await args.inputValue();
    await args.fill(example.replace('Harbour, wide', '"Pier, late'));
    await button(host, 'Call').click();
    await host.locator('#call-told.error').getByText(/^line \d+, column \d+: /).waitFor();
    await args.fill(example.replace('Harbour, wide', 'Pier, late'));
    await button(host, 'Call').click();
    await rowOf(library, clip).filter({ hasText: 'Pier, late' }).waitFor();
});

journey('a saved selection stands alone', [], async (desk) => {
    const [library, traffic] = [await desk.openConnected('/library/'), await desk.openConnected('/traffic/')];
    await tellClips(desk.tool, [clip]);
    await rowOf(library, clip).click();
    await button(library, 'Get properties').click();
    const list = traffic.getByRole('grid', { name: 'Traffic' });
    await list.getByText('QueryMediaPropertyInfo').first().waitFor();
    await list.getByText('OnIngestItemsReady').first().click();
    await list.getByText('QueryMediaPropertyInfo').first().click({ modifiers: ['Shift'] });
    const download = traffic.waitForEvent('download');
    await button(traffic, 'Save selection').click();
    const file = await download;
    await traffic.getByText('The file stands alone').waitFor();
    assert.match(file.suggestedFilename(), /^session-\d+-\d+\.jsonl$/);
    await promisify(execFile)(process.env.ASSET_CONNECTOR, ['replay', '--check', await file.path()]);
});
