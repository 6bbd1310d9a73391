// Whose notification is it: what the protocol says of answers and news, for a panel of one kind.

import model from './model.js';

const events = new Map(model.events.map((event) => [event.identifier, event]));
const shortName = (identifier) => identifier.slice(identifier.lastIndexOf('.') + 1);

function byName(kind) {
    const names = new Map();
    for (const event of model.events)
        if (event.kind === kind) names.set(event.identifier, event).set(shortName(event.identifier), event);
    return names;
}

const requests = byName('request');
const notifications = byName('notification');

/** Each finds an event by its identifier or the last part of it; undefined without one. */
export const findRequest = (name) => requests.get(name);
export const findNotification = (name) => notifications.get(name);
export { shortName };

/** What a header can say beside texts that stand so. */
const sources = ['call', 'request', 'task', 'fresh', 'current'];

/** The panel that the media collection connector names in all that it sends. */
export const collectionID = model.events
    .flatMap((event) => event.sent ?? [])
    .find(({ connector, header }) => connector === 'mediaCollection' && !sources.includes(header.browserID))
    .header.browserID;

export const kinds = ['library', 'mediaCollection'];

const answering = new Set(model.events.flatMap((event) => event.answers ?? []));
const ending = new Set(model.events.flatMap((event) => event.ends ?? event.answers ?? []));

/** @returns {boolean} Whether requests are answered by such a notification; it may come as news, too. */
export const isAnswer = (type) => answering.has(type);

/** @returns {boolean} Whether work ends with such a notification. */
export const endsWork = (type) => ending.has(type);

/** @returns {boolean} Whether a sending answers a request, by what the model says of answers. */
function isSentAsAnswer(type, { connector, callback, request }) {
    return (
        request !== undefined ||
        model.events.some((event) =>
            (event.handling ?? []).some(
                ({ connector: at, answer }) =>
                    at === connector &&
                    answer.notifications?.includes(type) &&
                    answer.callbacks?.includes(callback),
            ),
        )
    );
}

/** @returns {boolean} Whether the connector that names this panel sends such a notification as news, too. */
export function isNews(type, browserID) {
    const from = browserID === collectionID ? 'mediaCollection' : 'library';
    return (events.get(type)?.sent ?? []).some(
        (sending) => sending.connector === from && !isSentAsAnswer(type, sending),
    );
}

const ofLibraryAlone = new Set(
    model.events
        .filter((event) => event.sent?.every(({ connector }) => connector === 'library'))
        .map((event) => event.identifier),
);

/** @returns {boolean} Whether a panel of that kind takes a notification that answers none of its requests. */
export function takes(kind, type, browserID) {
    return kind === 'library'
        ? browserID !== collectionID
        : browserID === collectionID || ofLibraryAlone.has(type);
}

/** @returns {boolean} Whether the host takes a layer of references off; that can depend on the connector. */
export function isDecoded(type, text) {
    const decoding = (events.get(type)?.sent ?? []).filter(({ decoded }) => decoded);
    if (decoding.length === 0) return false;
    const isOfCollection = /<browserID\s+ID="([^"]*)"/.exec(text)?.[1] === collectionID;
    return decoding.some(({ connector }) => (connector === 'mediaCollection') === isOfCollection);
}

/**
 * @param request An event.
 * @param {string} kind Of the panel that asks.
 * @param {string | undefined} own What the host calls that panel, as far as it is known.
 * @param {string} said The browser id in the request.
 * @returns What answers: `types`, and whether a header names the right panel; undefined when nobody does.
 */
export function answerOf(request, kind, own, said) {
    const at = (connector) => request.handling.find((handling) => handling.connector === connector).answer;
    let answer = at(kind);
    if (answer.sender === 'nobody') return undefined;
    if (answer.sender === 'other') answer = at(kinds.find((other) => other !== kind));
    const types = new Set(answer.notifications ?? request.answers);
    const named = new Map([['current', own], ['request', said]]);
    const expected = named.has(answer.browserID) ? named.get(answer.browserID) : answer.browserID;
    return {
        types,
        isFor: (browserID) => (expected === undefined ? takes(kind, '', browserID) : browserID === expected),
    };
}

/** @returns {string[] | undefined} The places that a connector needs; undefined: none handles the request. */
export function needsOf(request, kind) {
    const handled = request.handling.filter((handling) => handling.handled);
    const handling = handled.find(({ connector }) => connector === kind) ?? handled[0];
    return handling === undefined ? undefined : (handling.needs ?? []);
}
