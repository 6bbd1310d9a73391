// A library of ten thousand clips.

import assert from 'node:assert/strict';
import { journey, rowOf, shoot, tellClips } from './desk.mjs';

const count = 10000;
const pathOf = (i) => `/media/day1/A${String(i).padStart(5, '0')}.mov`;

journey('ten thousand clips', [], async (desk) => {
    const { tool } = desk;
    const library = await desk.openConnected('/library/');
    await tellClips(tool, Array.from({ length: count }, (_, i) => pathOf(i)));
    await rowOf(library, pathOf(0)).click();

    const grid = library.getByRole('grid', { name: 'Clips' });
    assert.equal(await grid.getAttribute('aria-rowcount'), String(count + 1));
    const rows = grid.getByRole('row');
    const check = async (where) => assert.ok((await rows.count()) <= 200, `rows ${where}`);
    await check('at the begin');
    for (const share of [0.1, 0.5, 0.9]) {
        await grid.evaluate((view, share) => view.scrollTo(0, view.scrollHeight * share), share);
        await rowOf(library, pathOf(count * share)).waitFor();
        await check(`at ${share}`);
    }
    await library.keyboard.press('End');
    await rowOf(library, pathOf(count - 1)).and(library.locator('[aria-selected=true]')).waitFor();
    await check('at the end');
    await shoot(library, 'many-rows');
    await library.keyboard.press('Control+a');
    await library.getByRole('heading', { name: `${count.toLocaleString('en')} clips selected` }).waitFor();
    await library.getByRole('searchbox').fill('A09999');
    await rowOf(library, pathOf(count - 1)).waitFor();
    assert.equal(await rows.count(), 2);
});
