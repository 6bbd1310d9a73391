// What the lines of a recording are to a person: who speaks to whom, what it is called, what it names.

import { shortName } from '../client/rules.js';
import { zeroGuid } from '../client/guid.js';
import { labelsOf } from '../host/examples.js';
import { kindNames } from '../kit/words.js';

/** What can be shown and hidden, by its key. */
export const groups = {
    request: 'Requests',
    dispatcher: 'Dispatcher calls',
    callback: 'Callbacks',
    notification: 'Notifications',
    station: 'Station messages',
    hostCall: 'Host calls',
    life: 'Host and connectors',
    note: 'Notes',
};

const last = (name) => String(name).split('::').at(-1);
const connectorOf = (name) => kindNames[name] ?? String(name);

/** Lanes are 0 for panels, 1 for connectors, 2 for the host; `to` is who is spoken to, if lines say it. */
const kinds = {
    panel: { group: 'request', label: 'request', lanes: [0, 1], name: ({ panel }) => shortName(panel) },
    dispatcher: {
        group: 'dispatcher',
        label: 'dispatcher call',
        lanes: [1, 2],
        name: (line) => line.dispatcher,
    },
    callback: {
        group: 'callback',
        label: 'callback',
        lanes: [2, 1],
        name: ({ callback }) => callback,
        to: ({ to }) => connectorOf(to),
    },
    notification: {
        group: 'notification',
        label: 'notification',
        lanes: [1, 0],
        name: ({ notification }) => shortName(notification),
    },
    post: { group: 'station', label: 'post', lanes: [1, 2], name: ({ post }) => last(post) },
    deliver: { group: 'station', label: 'delivery', lanes: [2, 2], name: ({ deliver }) => last(deliver) },
    station: { group: 'station', label: 'broadcast', lanes: [2, 1], name: ({ message }) => last(message) },
    hostCall: {
        group: 'hostCall',
        label: 'host call',
        lanes: [1, 2],
        name: ({ hostCall }) => last(hostCall),
    },
    call: { group: 'hostCall', label: 'call by the host', lanes: [2, 1], name: ({ call }) => last(call) },
    create: {
        group: 'life',
        label: 'create',
        lanes: [2, 1],
        name: () => 'Create connector',
        to: ({ create }) => connectorOf(create),
    },
    release: {
        group: 'life',
        label: 'release',
        lanes: [2, 1],
        name: () => 'Release connector',
        to: ({ release }) => connectorOf(release),
    },
    register: {
        group: 'life',
        label: 'register',
        lanes: [2, 1],
        name: ({ register }) => (register ? 'Register requests' : 'Withdraw requests'),
    },
    host: {
        group: 'life',
        label: 'host',
        lanes: [2, 2],
        name: ({ host }) => `Set ${Object.keys(host ?? {})}`,
    },
    ui: { group: 'life', label: 'user interface', lanes: [2, 2], name: () => 'Deliver posted messages' },
    destroyed: {
        group: 'life',
        label: 'destroyed',
        lanes: [1, 1],
        name: () => 'Connector destroyed',
        to: ({ destroyed }) => connectorOf(destroyed),
    },
    exception: { group: 'life', label: 'exception', lanes: [1, 2], name: ({ exception }) => exception },
    note: { group: 'note', label: 'note', lanes: [], name: ({ note }) => note },
};

const unknown = {
    group: 'note',
    label: 'unknown line',
    lanes: [],
    name: (line) => Object.keys(line).find((key) => key !== 'us') ?? 'empty line',
};

/** @returns The kind of a line, which its first known key says. */
export function kindOf(line) {
    const key = Object.keys(line).find((each) => Object.hasOwn(kinds, each));
    return key === undefined ? unknown : kinds[key];
}

const roles = { taskID: 'task', msgID: 'message', batchID: 'batch', taskItemID: 'task item' };
const inText = /<(taskID|msgID|batchID|taskItemID)\s+ID=["']\{?([0-9a-fA-F-]{36})\}?["']/g;
const inTaskList = /<taskID(?:\s[^>]*)?>\s*\{?([0-9a-fA-F-]{36})\}?\s*<\/taskID>/g;
const guid = /^\{?([0-9a-f]{8}(?:-[0-9a-f]{4}){3}-[0-9a-f]{12})\}?$/i;

function* idsOfArguments(args, labels) {
    for (const [i, label] of labels.entries()) {
        const role = label === 'tasks' ? 'task' : label;
        if (!Object.values(roles).includes(role)) continue;
        for (const value of [args[i]].flat())
            if (typeof value === 'string') yield { role, id: guid.exec(value)?.[1] };
    }
}

function* namedIn(line) {
    if (typeof line.data === 'string') {
        for (const [, name, id] of line.data.matchAll(inText)) yield { role: roles[name], id };
        for (const [, id] of line.data.matchAll(inTaskList)) yield { role: 'task', id };
    }
    if (Array.isArray(line.args))
        yield* idsOfArguments(line.args, line.callback ? labelsOf(line.callback) : ['task', 'message']);
    const { header } = line.payload ?? {};
    for (const [name, role] of Object.entries(roles)) {
        const id = header?.[name] ?? line.payload?.[name];
        if (typeof id === 'string') yield { role, id: guid.exec(id)?.[1] };
    }
}

/** @returns {{role: string, id: string}[]} What a line names, each once, in small letters; no zero GUIDs. */
export function idsOf(line) {
    const found = new Map();
    for (const { role, id = zeroGuid } of namedIn(line)) {
        const small = id.toLowerCase();
        if (small !== zeroGuid) found.set(`${role} ${small}`, { role, id: small });
    }
    return [...found.values()];
}

/** @returns {string | undefined} The browser id in a text. */
export const browserIn = ({ data }) => /<browserID\s+ID=["']([^"'<>]*)["']/.exec(data ?? '')?.[1];
