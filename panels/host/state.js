// How the host stands: tasks, panels with their faults, exit, and the session that is played.

import { ask } from '../kit/dialog.js';
import { element, setText } from '../kit/elements.js';
import { plural } from '../kit/format.js';
import { kindNames } from '../kit/words.js';
import { shortName } from '../client/rules.js';
import { editCallback } from './callbacks.js';
import { attempt, byID, option, showFacts, showItems, tell } from './forms.js';
import { editAnswer } from './status.js';
import { statusOf, stepsOf } from './steps.js';

const faultKinds = ['drop', 'delay', 'double', 'reorder', 'garble', 'disconnect'];
const speeds = [0.25, 0.5, 1, 2, 5, 10, 100];
let deskOf;
let watch;

const byWhom = (by, kind) => (by ? `of ${[by, kindNames[kind] ?? kind].filter(Boolean).join(', ')}` : '');

function taskItem() {
    let [steps, task] = [[]];
    const name = element('strong');
    const done = element('span', { className: 'note' });
    const asker = element('span');
    const badge = element('span', { className: 'badge' });
    const title = element('p', { className: 'title' }, name, done, asker, badge);
    const progress = element('progress', { max: 100 });
    const id = element('code');
    const ids = element('p', { className: 'note' }, 'Task ', id);
    const buttons = element('div', { className: 'toolbar' });
    const item = element('li', {}, title, progress, ids, buttons);
    const run = (i) => {
        const { callback, args } = steps[i];
        if (byID('tasks-edit').checked) return editCallback(callback, args);
        attempt(byID('tasks-told'), deskOf(), 'callback', { callback, args }, `${callback} was called.`);
    };
    const show = (labels, act) => {
        while (buttons.children.length > labels.length) buttons.lastChild.remove();
        labels.forEach((label, i) => {
            if (buttons.children.length <= i)
                buttons.append(element('button', { type: 'button', onclick: () => act(i) }));
            setText(buttons.children[i], label);
        });
    };
    item.update = (value) => {
        task = value;
        steps = stepsOf(task, watch.callOf(task.msgID));
        const { what, operation, by, kind, percentage, isPaused, taskID } = task;
        const state = isPaused ? 'paused' : typeof percentage === 'number' ? `${percentage} %` : 'running';
        setText(name, what);
        setText(done, operation === what ? '' : (operation ?? ''));
        setText(asker, byWhom(by, kind));
        setText(badge, state);
        progress.setAttribute('aria-label', `${what} ${byWhom(by, kind)}`);
        if (typeof percentage === 'number' && percentage >= 0) progress.value = percentage;
        else progress.removeAttribute('value');
        setText(id, taskID);
        if (steps.length > 0)
            show(
                steps.map(({ label }) => label),
                run,
            );
        else if (statusOf(task) !== undefined) show(['Answer …'], () => editAnswer(task));
        else show([], run);
    };
    return item;
}

function faultsText(faults) {
    if (!faults) return 'No faults on the way';
    const { seed, percent, kinds = [], count = 0 } = faults;
    return `Faults: ${percent} % of ${kinds.join(', ')}, seed ${seed}, ${count} so far`;
}

function panelItem({ browserID }) {
    const title = element('p', { className: 'title' });
    const summary = element('summary');
    const number = (name, label, value, max) =>
        element(
            'label',
            { className: 'tick' },
            `${label} `,
            element('input', {
                type: 'number',
                name,
                value,
                min: '0',
                max,
                'aria-label': `${label} for ${browserID}`,
            }),
        );
    const form = element(
        'form',
        { noValidate: true },
        element(
            'div',
            { className: 'numbers' },
            number('percent', 'Percent', '20', '100'),
            number('seed', 'Seed', '1', '4294967295'),
        ),
        element(
            'fieldset',
            {},
            element('legend', { className: 'only-heard', textContent: `Kinds of faults for ${browserID}` }),
            ...faultKinds.map((kind) =>
                element(
                    'label',
                    { className: 'tick' },
                    element('input', { type: 'checkbox', name: kind, checked: kind === 'drop' }),
                    kind,
                ),
            ),
        ),
        element(
            'div',
            { className: 'toolbar' },
            element('button', { textContent: 'Make faults' }),
            element('button', {
                type: 'button',
                textContent: 'End faults',
                onclick: () => setFaults(browserID, 1, 0, []),
            }),
        ),
    );
    form.addEventListener('submit', (event) => {
        event.preventDefault();
        const { percent, seed } = form.elements;
        const kinds = faultKinds.filter((kind) => form.elements[kind].checked);
        const wrong = [
            [percent, 1, 100],
            [seed, 0, 4294967295],
        ].find(
            ([{ value }, least, most]) =>
                !/^[0-9]+$/.test(value) || Number(value) < least || Number(value) > most,
        );
        for (const input of [percent, seed]) input.setAttribute('aria-invalid', String(input === wrong?.[0]));
        if (wrong !== undefined) {
            wrong[0].focus();
            return tell(byID('panels-told'), `Write a whole number from ${wrong[1]} to ${wrong[2]}.`, false);
        }
        if (kinds.length === 0)
            return tell(byID('panels-told'), 'Choose at least one kind of faults.', false);
        setFaults(browserID, Number(seed.value), Number(percent.value), kinds);
    });
    const item = element('li', {}, title, element('details', {}, summary, form));
    item.update = ({ kind, faults }) => {
        title.replaceChildren(element('strong', { textContent: browserID }), kindNames[kind] ?? kind);
        setText(summary, faultsText(faults));
        summary.classList.toggle('bad', Boolean(faults));
    };
    return item;
}

const setFaults = (browserID, seed, percent, kinds) =>
    attempt(
        byID('panels-told'),
        deskOf(),
        'faults',
        { browserID, seed, percent, kinds },
        percent === 0
            ? `What ${browserID} says and hears is left alone.`
            : `${browserID} gets faults from now on.`,
    );

function exitText(exit) {
    if (!exit) return '';
    return exit.refusedBy !== undefined
        ? `Refused by ${exit.refusedBy}: the host goes on.`
        : 'Asked: the host ends in two seconds, unless a panel refuses.';
}

function showPlay(play) {
    byID('play').hidden = !play;
    if (!play) return;
    const { file, line, lines, comment, next, hasBegun, isEnded, isStepping, speed, problem } = play;
    const waitsFor = hasBegun === false ? undefined : play.waitsFor;
    showFacts(byID('play-facts'), {
        File: file,
        Line: `${line} of ${lines}${isEnded ? ', ended' : ''}`,
        Comment: comment || undefined,
        Next: next ?? undefined,
        'Waits for':
            hasBegun === false
                ? 'the first panel; open one'
                : waitsFor && `${shortName(waitsFor)} from a panel; or raise it here`,
    });
    byID('play-progress').max = Math.max(1, lines);
    byID('play-progress').value = line;
    setText(byID('play-problem'), problem ?? '');
    byID('play-step').disabled = Boolean(isEnded);
    byID('play-raise').disabled = !waitsFor;
    byID('play-stepping').checked = isStepping;
    const choice = byID('play-speed');
    if (!speeds.includes(speed) && ![...choice.options].some(({ value }) => value === String(speed)))
        choice.append(option(String(speed), `${speed}×`));
    choice.value = String(speed);
}

/** Tasks of the state, each with the kind of who asked, as far as it is known. */
export const tasksIn = ({ tasks = [], panels = [] }) =>
    tasks.map((task) => ({ kind: panels.find(({ browserID }) => browserID === task.by)?.kind, ...task }));

export function showState(state) {
    const { mode, panels = [], tasks = [], columns = [], record, author, exit, play } = state;
    showFacts(byID('state'), {
        Mode: mode === 'play' ? 'plays a session file' : 'live',
        Recording: record ? `to ${record}` : 'none: start the desk with --record FILE to have one',
        'Columns of panels': columns.length > 0 ? columns.map(({ name }) => name).join(', ') : undefined,
        'Panel of an author': author ? 'served at /panel/' : undefined,
    });
    setText(byID('exit-state'), exitText(exit));
    byID('exit').disabled = exit?.isAsked === true;
    byID('exit-state').className = exit?.refusedBy === undefined ? 'note' : 'warn';
    const keyOf = ({ taskID, msgID, what }) => `${what} ${taskID} ${msgID}`;
    showItems(byID('tasks'), tasksIn(state), keyOf, taskItem);
    byID('tasks-none').hidden = tasks.length > 0;
    showItems(byID('panels'), panels, ({ browserID }) => browserID, panelItem);
    byID('panels-none').hidden = panels.length > 0;
    setText(
        byID('panels-title'),
        panels.length > 0 ? `Connected panels: ${panels.length}` : 'Connected panels',
    );
    setText(byID('tasks-title'), tasks.length > 0 ? plural(tasks.length, 'running task') : 'Running tasks');
    showPlay(play);
}

export function beginState(getDesk, theWatch) {
    [deskOf, watch] = [getDesk, theWatch];
    byID('exit').addEventListener('click', async () => {
        const text =
            'Panels are told that the host exits. Unless one refuses, the desk ends after two seconds.';
        if ((await ask({ title: 'Exit the host?', text, fields: [], action: 'Exit the host' })) !== null)
            attempt(byID('exit-told'), deskOf(), 'exit', {}, '');
    });
    const play = (id, event, command, content, done) =>
        byID(id).addEventListener(event, ({ target }) =>
            attempt(byID('play-told'), deskOf(), command, content(target), done),
        );
    byID('play-speed').append(...speeds.map((speed) => option(String(speed), `${speed}×`)));
    play('play-step', 'click', 'step', () => ({}), '');
    play('play-raise', 'click', 'raise', () => ({}), 'The request of the file was raised.');
    play('play-stepping', 'change', 'pace', ({ checked }) => ({ isStepping: checked }), '');
    play('play-speed', 'change', 'pace', ({ value }) => ({ speed: Number(value) }), '');
}
