// Faults on the way between the desk and a library page.

import assert from 'node:assert/strict';
import { act, answer, journey, rowOf, tellClips } from './desk.mjs';

const [first, second, third] = ['/media/one.mov', '/media/two.mov', '/media/three.mov'];
const browserID = 'panel-1';
const answers = 'OnGetMediaPropertyInfoStatus';

/** `isLost`: what was told does not come again, so the page asks, and says what it lacks. */
const faults = [
    { kind: 'drop', past: 'dropped' },
    { kind: 'delay', past: 'delayed' },
    { kind: 'double', past: 'doubled' },
    { kind: 'reorder', past: 'reordered' },
    { kind: 'garble', past: 'garbled', isLost: true },
    { kind: 'disconnect', past: 'disconnected', percent: 50 }, // with 100 it never comes back
];

const hasMark = (mark) => ({ entries }) =>
    entries.some(({ marks = [] }) => marks.some((each) => each.startsWith(mark)));

for (const { kind, past, percent = 100, isLost = false } of faults)
    journey(`a library page that has faults: ${kind}`, [], async (desk) => {
        const { tool } = desk;
        const library = await desk.openConnected('/library/');
        await tool.do('faults', { browserID, seed: 7, percent, kinds: [kind] });
        await tellClips(tool, [first]);
        await act(library, { choose: 'Ingest …', fields: {}, confirm: 'Open ingest dialog' });
        await tellClips(tool, [second]);
        await tool.until(hasMark(`fault: ${past}`), 'a fault');
        if (isLost) await library.getByText('The host told what cannot be read').waitFor();
        await tool.do('faults', { browserID, percent: 0 });

        await tellClips(tool, [third]);
        await rowOf(library, third).waitFor();
        if (!isLost) {
            for (const clip of [first, second]) await rowOf(library, clip).waitFor();
            await library.locator('.task[data-status=running]').waitFor({ state: 'detached' });
        }
        assert.equal(await library.locator('.task[data-status=failed]').count(), 0);
        await act(library, { rows: [third], choose: 'Get properties' });
        await answer(tool, 'GetMediaPropertyInfo', answers, ({ taskID, msgID }) =>
            [taskID, msgID, 0, { filePath: third, duration: 50 * 10160640000, frameRate: 10160640000 }]);
        await rowOf(library, third).filter({ hasText: '00:00:02:00' }).waitFor();

        await tool.until(({ entries }) => entries.some(({ line }) => line.callback === answers), 'the answer');
        const asked = tool.entries.filter(({ line }) => line.panel?.endsWith('.OpenIngestDialog'));
        assert.equal(asked.length, 1);
        if (isLost) desk.forgive(/cannot be read/);
    });
