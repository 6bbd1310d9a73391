// The form for notifications that no connector sends.

import { zeroGuid } from '../client/guid.js';
import { collectionID } from '../client/rules.js';
import { textView } from '../traffic/text-view.js';
import { JsonField, attempt, byID, option } from './forms.js';
import { statuses } from './statuses.js';
import { statusOf } from './steps.js';

const name = byID('status-name');
const source = byID('status-for');
const told = byID('status-told');
const field = new JsonField(byID('status-record'), told);
const noHeader = { browserID: '', msgID: zeroGuid, taskID: zeroGuid };
let sources = new Map(); // what headers can be taken from, by its key

const headerOf = ({ browserID, msgID, taskID }) => ({
    browserID,
    msgID: msgID ?? zeroGuid,
    taskID: taskID ?? zeroGuid,
});

function showExample() {
    const { example } = statuses.find(({ identifier }) => identifier === name.value);
    const chosen = sources.get(source.value);
    field.set({ header: chosen === undefined ? noHeader : headerOf(chosen), ...example });
}

function takeHeader() {
    const chosen = sources.get(source.value);
    const answer = chosen && statusOf(chosen);
    const record = field.peek();
    if (answer !== undefined && answer !== name.value) {
        name.value = answer;
        showExample();
    } else if (typeof record === 'object' && record !== null && !Array.isArray(record))
        field.set({ ...record, header: chosen === undefined ? noHeader : headerOf(chosen) });
}

/** What headers can be taken from: tasks that run, and what was asked of late. */
export function showSources(tasks, requests) {
    const entries = [
        ...tasks.map((task) => [
            `task ${task.taskID}`,
            `task: ${task.what}${task.by ? ` of ${task.by}` : ''}`,
            { ...task, browserID: task.kind === 'mediaCollection' ? collectionID : task.by },
        ]),
        ...requests.map((request) => [
            `request ${request.number}`,
            `request ${request.number}: ${request.what} of ${request.browserID || 'nobody'}`,
            request,
        ]),
    ];
    const keys = entries.map(([key]) => key).join();
    if (keys === [...sources.keys()].join() && source.options.length > 0) return;
    const chosen = source.value;
    sources = new Map(entries.map(([key, , from]) => [key, from]));
    source.replaceChildren(option('', 'nobody: news'), ...entries.map(([key, text]) => option(key, text)));
    source.value = sources.has(chosen) ? chosen : '';
}

/** Shows the answer to a task, for a person to fill in and send. */
export function editAnswer(task) {
    source.value = `task ${task.taskID}`;
    name.value = statusOf(task);
    showExample();
    field.focus();
}

const check = (record) =>
    typeof record === 'object' && record !== null && !Array.isArray(record)
        ? undefined
        : 'A record is an object: write it in { }.';

export function beginStatuses(deskOf) {
    name.append(
        ...statuses.map((status) =>
            option(status.identifier, status.isAnswer ? `${status.name} (answers)` : status.name),
        ),
    );
    showSources([], []);
    name.addEventListener('change', showExample);
    source.addEventListener('change', takeHeader);
    byID('status-example').addEventListener('click', showExample);
    byID('status').addEventListener('submit', async (event) => {
        event.preventDefault();
        const record = field.read(check);
        if (record === undefined) return;
        const content = { identifier: name.value, record, decoded: byID('status-decoded').checked };
        const value = await attempt(told, deskOf(), 'notify', content, 'The panels were told this text:');
        byID('status-text').replaceChildren(...(value?.xml === undefined ? [] : [textView(value.xml, [])]));
    });
    showExample();
}
