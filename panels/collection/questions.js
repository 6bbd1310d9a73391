// What the media collection panel asks before it raises a request.

import { ask } from '../kit/dialog.js';
import { pathProblem } from '../kit/paths.js';
import { pathsProblem } from './requests.js';

const last = { copyTo: '' };

/** @param {string} paths What stands there first. */
export async function ingest(paths) {
    const values = await ask({
        title: 'Ingest files',
        fields: [
            {
                name: 'paths',
                label: 'Files',
                type: 'textarea',
                value: paths,
                required: true,
                check: pathsProblem,
                hint: 'One a line, all of one folder: the first with its whole path, the others by name.',
            },
            { name: 'isCopied', label: 'Copy them to a folder', type: 'checkbox' },
            {
                name: 'copyTo',
                label: 'Folder for copies',
                value: last.copyTo,
                required: true,
                check: pathProblem,
                when: ({ isCopied }) => isCopied,
            },
            {
                name: 'isVerified',
                label: 'Verify the copies',
                type: 'checkbox',
                value: true,
                when: ({ isCopied }) => isCopied,
            },
            {
                name: 'mode',
                label: 'Verify by',
                type: 'select',
                value: 'MD5',
                options: [
                    ['MD5', 'MD5'],
                    ['SHA1', 'SHA-1'],
                ],
                when: ({ isCopied, isVerified }) => isCopied && isVerified,
            },
        ],
        action: 'Ingest',
    });
    last.copyTo = values?.copyTo ?? last.copyTo;
    return values;
}

export const addColumn = (columns) =>
    ask({
        title: 'Add a column',
        fields: [{ name: 'name', label: 'Name', required: true, check: (name) => columns.problemOf(name) }],
        action: 'Add column',
    });

const columnField = (columns) => ({
    name: 'id',
    label: 'Column',
    type: 'select',
    value: columns.all[0].id,
    options: columns.all.map(({ id, name }) => [id, name]),
});

export const renameColumn = (columns) =>
    ask({
        title: 'Rename a column',
        fields: [
            columnField(columns),
            {
                name: 'name',
                label: 'New name',
                required: true,
                check: (name, { id }) => columns.problemOf(name, id),
            },
        ],
        action: 'Rename column',
    });

export const deleteColumn = (columns) =>
    ask({
        title: 'Delete a column',
        text: 'What stands in it is lost for all assets.',
        fields: [columnField(columns)],
        action: 'Delete column',
    });

export const fillIn = ({ name, id }, columns) =>
    ask({
        title: `Fill in – ${name}`,
        fields: columns.all.map((column) => ({
            name: column.id,
            label: column.name,
            value: columns.valueOf(id, column.id),
        })),
        action: 'Fill in',
    });

export const report = () =>
    ask({
        title: 'Report to the host',
        fields: [
            {
                name: 'level',
                label: 'Kind',
                type: 'select',
                value: 'INFO',
                options: [
                    ['INFO', 'Information'],
                    ['WARN', 'Warning'],
                    ['ERROR', 'Error'],
                ],
            },
            { name: 'text', label: 'What happened', required: true },
            { name: 'isShown', label: 'Show it to the user', type: 'checkbox', value: true },
        ],
        action: 'Report',
    });
