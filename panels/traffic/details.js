// The pane beside the list: all that is known of one entry.

import { parseNotification } from '../client/index.js';
import { writeJson } from '../desk/json.js';
import { element } from '../kit/elements.js';
import { plural } from '../kit/format.js';
import { durationOf } from './log.js';
import { lengthText, timeText } from './texts.js';
import { placeOf } from './printer.js';
import { mostText, textView } from './text-view.js';

const mostLinks = 60;

function recordView(title, text) {
    const shown = text.length > mostText ? `${text.slice(0, mostText)} …` : text;
    return element(
        'div',
        {},
        element('h3', { textContent: title }),
        element('pre', { textContent: shown, tabIndex: 0, role: 'region', 'aria-label': title }),
    );
}

const problemView = (title, text) =>
    element(
        'div',
        {},
        element('h3', { textContent: title }),
        element('p', { className: 'error', textContent: text }),
    );

export class Details {
    #content = document.getElementById('details-content');
    #title = document.getElementById('details-title');
    #on;
    #log;
    #shown;

    /** @param on `filter(id)`, `go(number)` and `inspect(number)`, which asks the desk. */
    constructor(log, on) {
        this.#log = log;
        this.#on = on;
    }

    show(row) {
        this.#shown = row;
        document.getElementById('details-none').hidden = row !== undefined;
        this.#content.hidden = row === undefined;
        this.#title.textContent = row === undefined ? 'Details' : row.name;
        if (row !== undefined) this.#content.replaceChildren(...this.#parts(row).filter(Boolean));
    }

    /** What belongs to the entry may have come since. */
    refresh() {
        const old = document.getElementById('belongs');
        if (this.#shown === undefined || old === null || old.contains(document.activeElement)) return;
        old.replaceWith(this.#belongs(this.#shown));
    }

    #parts(row) {
        return [
            this.#facts(row),
            row.findings.length > 0 && this.#findings(row),
            this.#belongs(row),
            row.ids.length > 0 && this.#ids(row),
            element('div', { className: 'both' }, ...this.#texts(row)),
        ];
    }

    #facts(row) {
        const facts = [
            ['Entry', `${row.number}, ${row.kind}`],
            ['Time', timeText(row.us) || 'not told'],
            ['From, to', row.to === '' || row.to === row.from ? row.from : `${row.from} → ${row.to}`],
            ['Identifier', row.line.panel ?? row.line.notification],
            ['Raised by', row.by],
            ['Marks', row.marks.join('; ') || undefined],
        ].filter(([, text]) => text !== undefined);
        return element(
            'dl',
            { className: 'facts' },
            ...facts.flatMap(([name, textContent]) => [
                element('dt', { textContent: name }),
                element('dd', { textContent }),
            ]),
        );
    }

    #findings({ findings }) {
        const items = findings.map(({ line, column, path, what, advice }) =>
            element(
                'li',
                {},
                element('button', {
                    type: 'button',
                    textContent: `${line}:${column}`,
                    'aria-label': `${line}:${column}, show this place`,
                    onclick: () => this.#showPlace(line, column),
                }),
                ` ${what}${advice ? `; ${advice}` : ''}${path ? ` (${path})` : ''}`,
            ),
        );
        return element(
            'div',
            { id: 'findings' },
            element('h3', { textContent: plural(findings.length, 'finding') }),
            element('ul', {}, ...items),
        );
    }

    #showPlace(line, column) {
        const places = this.#shown.findings.map((finding) =>
            placeOf(this.#shown.body, finding.line, finding.column),
        );
        const wanted = [...new Set(places)]
            .sort((one, other) => one - other)
            .indexOf(placeOf(this.#shown.body, line, column));
        const marks = this.#content.querySelectorAll('mark');
        const mark = marks[Math.min(wanted, marks.length - 1)];
        mark?.focus();
        mark?.scrollIntoView({ block: 'center' });
    }

    #belongs(row) {
        const relations = [...this.#log.relations(row)].sort(([one], [other]) => one - other);
        const links = relations
            .slice(0, mostLinks)
            .map(([number, how]) =>
                element('button', {
                    type: 'button',
                    textContent: `${how}: ${this.#log.find(number).name}`,
                    title: `Entry ${number}`,
                    onclick: () => this.#on.go(number),
                }),
            );
        const length = durationOf(row);
        const title =
            length === undefined
                ? 'Belongs to it'
                : `Belongs to it, ${lengthText(length.us)} to the ${length.of}`;
        const more = relations.length - links.length;
        return element(
            'div',
            { id: 'belongs' },
            element('h3', { textContent: title }),
            links.length === 0
                ? element('p', { className: 'note', textContent: 'Nothing that is kept.' })
                : element(
                      'div',
                      { className: 'links' },
                      ...links,
                      more > 0 && element('span', { className: 'note', textContent: `and ${more} more` }),
                  ),
        );
    }

    #ids(row) {
        const items = row.ids.map(({ role, id }) =>
            element(
                'li',
                {},
                `${role} `,
                element('code', { textContent: id }),
                element('button', {
                    type: 'button',
                    textContent: 'Filter',
                    'aria-label': `Filter by ${role} ${id}`,
                    onclick: () => this.#on.filter(id),
                }),
            ),
        );
        return element(
            'div',
            {},
            element('h3', { textContent: 'Ids' }),
            element('ul', { className: 'ids links' }, ...items),
        );
    }

    #texts(row) {
        const { data, notification, panel, note } = row.line;
        if (note !== undefined) return [];
        if (typeof data !== 'string') return [recordView('Line', writeJson(row.line, { width: 60 }))];
        const text = textView(data, row.findings);
        if (notification !== undefined) return [text, this.#notified(notification, data)];
        if (panel === undefined)
            return [text, recordView('Line', writeJson({ ...row.line, data: '…' }, { width: 60 }))];
        const waiting = recordView('Record', 'Reading …');
        this.#inspect(row.number, waiting);
        return [text, waiting];
    }

    #notified(type, data) {
        try {
            return recordView('Record', writeJson(parseNotification(type, data), { width: 60 }));
        } catch (error) {
            return problemView('Record', error.message);
        }
    }

    async #inspect(number, place) {
        try {
            const { record, problem } = await this.#on.inspect(number);
            place.replaceWith(
                record === undefined
                    ? problemView('Record', `It cannot be read: ${problem}`)
                    : recordView('Record', writeJson(record, { width: 60 })),
            );
        } catch (error) {
            place.replaceWith(
                problemView(
                    'Record',
                    `The desk did not say what it means: ${error.message}. ` +
                        'Select the entry again to ask again.',
                ),
            );
        }
    }
}
