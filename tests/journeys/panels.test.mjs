// Two library panels at once: an answer reaches only who asked, news reach both.

import assert from 'node:assert/strict';
import { act, answer, journey, rowOf, tellClips } from './desk.mjs';

const [clip, later] = ['/media/day1/A001_C001.mov', '/media/day1/A001_C002.mov'];

journey('an answer is for who asked', [], async (desk) => {
    const [asker, other] = [await desk.openConnected('/library/'), await desk.openConnected('/library/')];
    const { tool } = desk;
    await tellClips(tool, [clip]);
    for (const page of [asker, other]) await rowOf(page, clip).click();
    const thumbnail = { choose: 'Request thumbnail …', fields: {}, confirm: 'Request thumbnail' };
    await act(asker, thumbnail);
    await other.getByText(/Thumbnail.* begun by panel-1/).waitFor();
    await answer(tool, 'RequestThumbnail', 'OnRequestThumbnailStatus', ({ taskID, msgID }) =>
        [taskID, msgID, 0, clip, taskID, 508032000000, '/cache/thumbs/one.png', taskID, taskID]);
    await asker.getByText('/cache/thumbs/one.png').waitFor();

    await tellClips(tool, [later]);
    for (const page of [asker, other]) await rowOf(page, later).waitFor();
    assert.equal(await other.getByText('/cache/thumbs/one.png').count(), 0);
    await other.getByText(/begun by panel-1/).waitFor({ state: 'detached' });
    for (const page of [asker, other])
        assert.equal(await page.locator('.task[data-status=failed]').count(), 0);
});
