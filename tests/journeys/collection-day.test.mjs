// A day at the media collection panel, as the session file has it.

import { checkTraffic, journey, playDay, rowOf, sessionFile, shoot } from './desk.mjs';

const clip = '/media/day1/A002_C001.mov';
const failed = (hasText) => (page) => page.locator('.task[data-status=failed]').filter({ hasText });
const sent = (text) => (page) => page.locator('.task-last').getByText(text);
const head = (page, name) => page.getByRole('columnheader', { name });

const steps = [
    {
        ...{ request: 'IngestMedia', choose: 'Ingest files …', confirm: 'Ingest' },
        fields: {
            ...{ Files: `${clip}\nA002_C002.mov`, 'Copy them to a folder': true },
            ...{ 'Folder for copies': '/backup/day1', 'Verify the copies': true, 'Verify by': 'MD5' },
        },
        shows: failed('A002_C002.mov: Nothing is there'),
    },
    {
        ...{ request: 'ReadXMPFromCache', rows: [clip], choose: 'Read XMP of project' },
        shows: failed('Read it from disk'),
    },
    {
        ...{ request: 'ReadXMPFromDisk', rows: [clip], choose: 'Read XMP from disk' },
        shows: (page) => rowOf(page, clip).filter({ hasText: 'XMP read' }),
    },
    {
        ...{ request: 'InsertDynamicColumns', choose: 'Add column …', fields: { Name: 'Scene' } },
        ...{ confirm: 'Add column', shows: (page) => head(page, 'Scene') },
    },
    {
        ...{ request: 'UpdateDynamicColumnFields', rows: [clip], choose: 'Fill in …' },
        ...{ fields: { Scene: '12A' }, confirm: 'Fill in' },
        shows: (page) => rowOf(page, clip).filter({ hasText: '12A' }),
    },
    {
        ...{ request: 'DeleteDynamicColumns', choose: 'Delete column …', fields: { Column: 'Scene' } },
        ...{ confirm: 'Delete column', shows: sent('Delete column – Scene: sent.') },
    },
    {
        ...{ request: 'ReportEvent', choose: 'Report …', confirm: 'Report', shows: sent('Report: sent.') },
        fields: { Kind: 'WARN', 'What happened': 'The backup is nearly full.', 'Show it to the user': true },
    },
];

const args = ['--play', sessionFile('media-collection-day'), '--speed', '20'];
journey('a day at the media collection panel', args, async (desk) => {
    const collection = await desk.openConnected('/collection/');
    const [traffic, host] = [await desk.openConnected('/traffic/'), await desk.openConnected('/host/')];
    const { tool } = desk;
    await playDay(collection, tool, steps);
    await head(collection, 'Scene').waitFor({ state: 'detached' });
    await collection.getByRole('treegrid').getByText('First cut').waitFor();
    await shoot(collection, 'collection-day');

    await checkTraffic(traffic, tool, 'panel-1', steps.map(({ request }) => request));
    await host.getByRole('cell', { name: 'The backup is nearly full.' }).waitFor();
});
