// The form for callbacks of the ingest library.

import { setText } from '../kit/elements.js';
import { argumentsOf, callbacks, findCallback, labelsOf } from './examples.js';
import { JsonField, attempt, byID, option } from './forms.js';

const form = byID('call');
const name = byID('call-name');
const told = byID('call-told');
const field = new JsonField(byID('call-args'), told);

/** Shows a callback with arguments, for a person to change. */
export function showCallback(callback, args = argumentsOf(callback)) {
    name.value = callback;
    const labels = labelsOf(callback);
    setText(byID('call-means'), findCallback(callback).means);
    setText(byID('call-labels'), `In this order: ${labels.join(', ')}.`);
    setText(told, '');
    told.className = '';
    field.set(args);
}

export function editCallback(callback, args) {
    showCallback(callback, args);
    field.focus();
}

function check(args) {
    const labels = labelsOf(name.value);
    if (!Array.isArray(args)) return 'Arguments are a list: write them in [ ], in the order below.';
    if (args.length === labels.length) return undefined;
    return `${name.value} takes ${labels.length} arguments (${labels.join(', ')}), not ${args.length}.`;
}

export function beginCallbacks(deskOf) {
    name.append(...callbacks.map((callback) => option(callback.name, callback.name)));
    name.addEventListener('change', () => showCallback(name.value));
    byID('call-example').addEventListener('click', () => showCallback(name.value));
    form.addEventListener('submit', (event) => {
        event.preventDefault();
        const args = field.read(check);
        if (args === undefined) return;
        const to = byID('call-to').value || undefined;
        attempt(told, deskOf(), 'callback', { callback: name.value, args, to }, `${name.value} was called.`);
    });
    showCallback('OnTransferProgress');
}
