// Two library panels at once: an answer reaches only who asked, news reach both.

import assert from 'node:assert/strict';
import { act, answer, journey, rowOf, tellClips } from './desk.mjs';

const [clip, later] = ['/media/day1/A001_C001.mov', '/media/day1/A001_C002.mov'];

journey('an answer is for who asked', [], async (desk) => {
    const [asker, other] = [await desk.openConnected('/library/'), await desk.openConnected('/library/')];
    const { tool } = desk;
    await tellClips(tool, [clip]);
    for (const page of [asker, other]) await rowOf(page, clip).click();
    await act(asker, { choose: 'Read XMP' });
    await other.getByText('Read XMP, begun by panel-1').waitFor();
    await answer(tool, 'ImportXMP', 'OnReadXMPFinished', ({ taskID, msgID }) =>
        [taskID, msgID, 0, clip, taskID, {}, '<packet/>', '', '', taskID, taskID, [], null]);
    await asker.locator('#details').getByText('<packet/>').waitFor();

    await tellClips(tool, [later]);
    for (const page of [asker, other]) await rowOf(page, later).waitFor();
    assert.equal(await other.locator('#details').getByText('<packet/>').count(), 0);
    await other.getByText(/begun by panel-1/).waitFor({ state: 'detached' });
    for (const page of [asker, other])
        assert.equal(await page.locator('.task[data-status=failed]').count(), 0);
});
