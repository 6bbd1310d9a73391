// The library panel and the traffic view without a mouse.

import assert from 'node:assert/strict';
import { journey, rowOf, tellClips } from './desk.mjs';

const [first, second] = ['/media/day1/A001_C001.mov', '/media/day1/A001_C002.mov'];
const mostStops = 40;

const focused = (page) => page.evaluate(() => {
    const { dataset, role, localName, textContent, id } = document.activeElement;
    return { key: dataset.key, role: role ?? localName, text: textContent.trim(), id };
});

/** Goes on by Tab until the focus is where it is wanted, as it must be within a round. */
async function tabTo(page, isThere, what) {
    for (let i = 0; i < mostStops; ++i) {
        await page.keyboard.press('Tab');
        if (isThere(await focused(page))) return;
    }
    assert.fail(`${what} is not reached by Tab`);
}

const press = async (page, ...keys) => {
    for (const key of keys) await page.keyboard.press(key);
};

const selected = (page, key) => rowOf(page, key).and(page.locator('[aria-selected=true]')).waitFor();

journey('the library panel by keyboard', [], async (desk) => {
    const { tool } = desk;
    const library = await desk.openConnected('/library/');
    await tellClips(tool, [first, second]);
    await rowOf(library, second).waitFor();
    await tabTo(library, ({ key }) => key === first, 'the grid');
    await press(library, 'ArrowDown');
    await selected(library, second);
    await press(library, 'Enter');
    assert.equal((await focused(library)).id, 'details');

    await tabTo(library, ({ text }) => text === 'Rename …', 'the action');
    await press(library, 'Enter');
    const dialog = library.getByRole('dialog', { name: 'Rename file' });
    await dialog.waitFor();
    await press(library, 'Escape');
    await dialog.waitFor({ state: 'detached' });
    assert.equal((await focused(library)).text, 'Rename …');

    await press(library, 'Enter');
    await library.keyboard.type('A001_C001.mov/');
    await press(library, 'Enter');
    await dialog.locator('.error:not([hidden]):not(:empty)').waitFor();
    assert.equal((await focused(library)).role, 'input');
    await library.keyboard.press('Control+a');
    await library.keyboard.type('Boats.mov');
    await press(library, 'Enter');
    await tool.until(({ state }) => state.tasks.some(({ what }) => what === 'RenameRequest'), 'the request');
    assert.equal((await focused(library)).text, 'Rename …');
});

journey('the traffic view by keyboard', [], async (desk) => {
    const { tool } = desk;
    const traffic = await desk.openConnected('/traffic/');
    await tellClips(tool, [first]);
    await traffic.getByRole('grid', { name: 'Traffic' }).getByText('OnIngestItemsReady').first().waitFor();
    await tabTo(traffic, ({ key }) => key !== undefined, 'the grid');
    await press(traffic, 'End', 'ArrowUp', 'Home', 'ArrowDown');
    const { key } = await focused(traffic);
    await selected(traffic, key);
    await press(traffic, 'Enter');
    assert.equal((await focused(traffic)).id, 'details');
    await press(traffic, 'Escape');
    assert.equal((await focused(traffic)).key, key);
    await press(traffic, 'Shift+End');
    await traffic.getByText(/[0-9]+ selected/).waitFor();
    await tabTo(traffic, ({ text }) => text === 'Pause', 'the toolbar');
    await press(traffic, 'Space');
    await traffic.getByRole('button', { name: 'Resume', pressed: true }).waitFor();
});
