// What a person does at the library panel in the day of its session file.

import { rowOf } from './desk.mjs';

export const [first, second] = ['/media/day1/A001_C001.mov', '/media/day1/A001_C002.mov'];
export const [preview, renamed] = ['/media/preview/A001_C001_preview.mp4', '/media/day1/Harbour_boats.mov'];

/** What play waits for, what a person does then, and what shows that it came about. */
export const steps = [
    {
        request: 'OpenIngestDialog',
        ...{ choose: 'Ingest …', fields: { 'Target bin': 'Day 1' }, confirm: 'Open ingest dialog' },
        shows: (page) => rowOf(page, second).filter({ hasText: 'Harbour, boats' }),
    },
    {
        ...{ request: 'ImportXMP', rows: [first], choose: 'Read XMP' },
        shows: (page) => page.locator('#details').getByText('http://ns.example.com/meta/'),
    },
    {
        ...{ request: 'RequestThumbnail', rows: [first], choose: 'Request thumbnail …' },
        ...{ fields: {}, confirm: 'Request thumbnail' },
        shows: (page) => page.locator('#details').getByText('/cache/thumbs/A001_C001.png'),
    },
    {
        ...{ request: 'TranscodeRequest', rows: [first], choose: 'Transcode …', confirm: 'Transcode' },
        fields: {
            ...{ Preset: '/presets/preview.xml', 'Output folder': '/media/preview' },
            ...{ 'File name': 'A001_C001_preview.mp4', 'Write XMP to the new file': false },
        },
        shows: (page) => rowOf(page, preview),
    },
    {
        ...{ request: 'TransferRequest', rows: [preview], choose: 'Transfer …', confirm: 'Transfer' },
        fields: {
            ...{ To: 'ftp', Server: 'ftp.example.com', Port: '21', User: 'harbour', Password: 'never shown' },
            ...{ Folder: '/incoming', 'Overwrite files that are there': true },
        },
        shows: (page) => page.locator('.task[data-status=done]').filter({ hasText: 'Transfer' }),
    },
    {
        ...{ request: 'RenameRequest', rows: [second], choose: 'Rename …', confirm: 'Rename' },
        fields: { 'New name': 'Harbour_boats.mov' },
        shows: (page) => rowOf(page, renamed),
    },
    {
        ...{ request: 'ExitApp', choose: 'Refuse to close' },
        shows: (page) => page.locator('#exit').getByText('The host was told not to end'),
    },
];
