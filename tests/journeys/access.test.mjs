// Every page for people with aids: light and dark, narrow and wide, empty and busy.

import assert from 'node:assert/strict';
import { act, checkAccess, journey, rowOf, shoot, tellClips } from './desk.mjs';

const paths = ['/', '/library/', '/collection/', '/host/', '/traffic/'];
const looks = [320, 1600].flatMap((width) => ['light', 'dark'].map((colorScheme) => ({ width, colorScheme })));
const clip = '/media/day1/A001_C001.mov';

async function checkAll(pages, how) {
    for (const [path, page] of pages)
        for (const { colorScheme, width } of looks) {
            await page.emulateMedia({ colorScheme });
            await page.setViewportSize({ width, height: 900 });
            const what = `${path} ${how}, ${colorScheme}, ${width} px`;
            await checkAccess(page, what);
            const overflow = await page.evaluate(() => document.documentElement.scrollWidth - innerWidth);
            assert.ok(overflow <= 0, `${what}: ${overflow} px wider than the window`);
            await shoot(page, `access${path.replaceAll('/', '-')}${how}-${colorScheme}-${width}`);
        }
}

journey('pages for everybody', [], async (desk) => {
    const { tool } = desk;
    const pages = [];
    for (const path of paths) pages.push([path, await desk.openConnected(path)]);
    await checkAll(pages, 'empty');

    const [, library, collection, host, traffic] = pages.map(([, page]) => page);
    await tellClips(tool, [clip, '/media/day1/A001_C002.mov']);
    const { browserID } = tool.state.panels.find(({ kind }) => kind === 'mediaCollection');
    await tool.do('faults', { browserID, seed: 1, percent: 1, kinds: ['delay'] });
    await act(library, { choose: 'Ingest …', fields: {}, confirm: 'Open ingest dialog' });
    const fields = { Preset: '/presets/a.xml' };
    await act(library, { rows: [clip], choose: 'Transcode …', fields, confirm: 'Transcode' });
    await library.locator('.task[data-status=running]').waitFor();
    await act(collection, { rows: [clip], choose: 'Read XMP of project' });
    await collection.locator('.task[data-status=failed]').waitFor();
    await act(collection, { choose: 'Add column …', fields: { Name: 'Scene' }, confirm: 'Add column' });
    await host.getByRole('heading', { name: 'Ingest dialog' }).waitFor();
    await host.getByRole('heading', { name: '1 running task' }).waitFor();
    await traffic.getByRole('grid', { name: 'Traffic' }).getByText('TranscodeRequest').first().click();
    await traffic.getByRole('region', { name: 'Text' }).waitFor();
    await checkAll(pages, 'busy');

    await rowOf(library, clip).click();
    await library.getByRole('button', { name: 'Transfer …' }).click();
    await library.getByRole('dialog').getByRole('button', { name: 'Transfer' }).click(); // lacks a folder
    await library.getByRole('dialog').locator('.error:not([hidden])').first().waitFor();
    await checkAll([['/library/', library]], 'asking');
});
