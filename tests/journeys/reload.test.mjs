// A panel that is loaded anew in the middle of a day.

import { connectionOf, journey, playDay, rowOf, sessionFile } from './desk.mjs';
import { first, second, steps } from './library-steps.mjs';

const args = ['--play', sessionFile('library-day'), '--speed', '20'];
journey('a day goes on behind a reload', args, async (desk) => {
    const library = await desk.openConnected('/library/');
    const { tool } = desk;
    await playDay(library, tool, steps.slice(0, 2), 'RequestThumbnail');
    await library.reload();
    await connectionOf(library, 'open');
    await rowOf(library, first).waitFor();
    await rowOf(library, second).filter({ hasText: 'Harbour, boats' }).waitFor();
    await playDay(library, tool, steps.slice(2));
});
