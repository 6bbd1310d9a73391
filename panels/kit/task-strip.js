// The tasks as a strip: what runs and how far it is, what failed and what to do.

import { element, setText } from './elements.js';
import { statusTexts } from './outcome.js';
import { pathEnd, plural } from './format.js';

const mostItems = 20;

const tones = { done: 'good', failed: 'bad', lost: 'warn', cancelled: '', running: '', paused: 'warn' };
const isOver = ({ status }) => !['running', 'paused'].includes(status);

class Entry {
    #title = element('span', { className: 'task-title' });
    #status = element('span', { className: 'badge' });
    #detail = element('p', { className: 'task-detail' });
    #items = element('ul', { className: 'task-items' });
    #bar = element('progress', { max: 100 });
    #cancel = element('button', { type: 'button', textContent: 'Cancel' });
    #clear = element('button', { type: 'button', className: 'quiet', textContent: 'Dismiss' });
    #task;
    #shown;

    constructor(on) {
        this.#cancel.addEventListener('click', () => on.cancel(this.#task));
        this.#clear.addEventListener('click', () => on.clear(this.#task));
        const head = element(
            'div',
            { className: 'task-head' },
            this.#title,
            this.#status,
            this.#cancel,
            this.#clear,
        );
        this.node = element('li', { className: 'task' }, head, this.#bar, this.#detail, this.#items);
    }

    show(task, canCancel) {
        this.#task = task;
        const { title, status, percentage, detail, by } = task;
        const isRunning = !isOver(task);
        this.node.dataset.status = status;
        setText(this.#title, by === undefined ? title : `${title}, begun by ${by}`);
        const share = isRunning && percentage !== null ? ` ${percentage} %` : '';
        setText(this.#status, statusTexts[status] + share);
        this.#status.className = `badge ${tones[status]}`;
        setText(this.#detail, detail);
        this.#detail.hidden = detail === '';
        this.#showItems(task.items);
        this.#bar.hidden = !isRunning;
        this.#bar.setAttribute('aria-label', title);
        if (percentage === null) this.#bar.removeAttribute('value');
        else this.#bar.value = percentage;
        this.#cancel.hidden = !isRunning || !canCancel;
        this.#cancel.setAttribute('aria-label', `Cancel: ${title}`);
        this.#clear.hidden = isRunning;
        this.#clear.setAttribute('aria-label', `Dismiss: ${title}`);
    }

    #showItems(items) {
        if (this.#shown === items) return;
        this.#shown = items;
        const texts = items.slice(0, mostItems).map(({ path, text }) => `${pathEnd(path)}: ${text}`);
        if (items.length > mostItems) texts.push(`And ${items.length - mostItems} more.`);
        this.#items.replaceChildren(...texts.map((textContent) => element('li', { textContent })));
        this.#items.hidden = items.length === 0;
    }
}

export class TaskStrip {
    #entries = new Map(); // by task id
    #list = element('ul', { className: 'task-list' });
    #count = element('span', { className: 'note' });
    #none = element('p', {
        className: 'note',
        textContent: 'No tasks. What you start shows here with its progress.',
    });
    #last = element('p', { className: 'note task-last', 'aria-live': 'polite' });
    #clearAll = element('button', { type: 'button', className: 'quiet', textContent: 'Dismiss ended' });
    #note = element('p', { className: 'note', hidden: true });
    #on;

    /**
     * @param {HTMLElement} section
     * @param {{cancel: (task) => void, canCancel: (task) => boolean, clear: (task?) => void}} on
     */
    constructor(section, on) {
        this.#on = on;
        this.#clearAll.addEventListener('click', () => on.clear());
        const title = element('h2', { textContent: 'Tasks', id: 'tasks-title' });
        section.setAttribute('aria-labelledby', title.id);
        section.append(
            element('div', { className: 'toolbar' }, title, this.#count, this.#last, this.#clearAll),
            this.#none,
            this.#list,
            this.#note,
        );
    }

    /** @param {string} text What the page does not know; empty for nothing. */
    set note(text) {
        setText(this.#note, text);
        this.#note.hidden = text === '';
    }

    show(tasks) {
        const had = this.#list.contains(document.activeElement);
        for (const id of [...this.#entries.keys()])
            if (!tasks.some((task) => task.id === id)) {
                this.#entries.get(id).node.remove();
                this.#entries.delete(id);
            }
        tasks.forEach((task, place) => {
            const entry = this.#entries.get(task.id) ?? new Entry(this.#on);
            this.#entries.set(task.id, entry);
            if (this.#list.children[place] !== entry.node)
                this.#list.insertBefore(entry.node, this.#list.children[place] ?? null);
            entry.show(task, this.#on.canCancel(task));
        });
        const running = tasks.filter((task) => !isOver(task)).length;
        setText(this.#count, running > 0 ? `${plural(running, 'task runs', 'tasks run')}` : '');
        this.#none.hidden = tasks.length > 0;
        this.#clearAll.hidden = running === tasks.length;
        if (had && !this.#list.contains(document.activeElement))
            this.#list.querySelector('button:not([hidden])')?.focus();
    }

    /** Says what ended last, also to those who do not see the strip. */
    announce(text) {
        this.#last.textContent = text;
    }
}
