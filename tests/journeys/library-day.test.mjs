// A day at the library panel, as the session file has it.

import assert from 'node:assert/strict';
import { checkTraffic, journey, playDay, sessionFile, shoot } from './desk.mjs';
import { first, preview, renamed, steps } from './library-steps.mjs';

const args = ['--play', sessionFile('library-day'), '--speed', '20'];
journey('a day at the library panel', args, async (desk) => {
    const library = await desk.openConnected('/library/');
    const traffic = await desk.openConnected('/traffic/');
    const { tool } = desk;
    await playDay(library, tool, steps);

    const rows = library.getByRole('grid', { name: 'Clips' }).locator('[data-key]');
    const keys = await rows.evaluateAll((rows) => rows.map(({ dataset }) => dataset.key));
    assert.deepEqual(keys.sort(), [first, renamed, preview].sort());
    await shoot(library, 'library-day');

    await checkTraffic(traffic, tool, 'panel-1', steps.map(({ request }) => request));
    // The page says of a thumbnail where its clip is from, too.
    const marks = tool.entries.flatMap(({ marks = [] }) => marks);
    assert.deepEqual(marks.filter((mark) => /^difference: (?!.* was left out,)/.test(mark)), []);
    assert.doesNotMatch(JSON.stringify(tool.entries), /never shown/);
    await shoot(traffic, 'library-day-traffic');
});
