// <ac-grid>: a list of any length as an accessible grid, or as a tree, of which only what is in view is
// there.

import { element, setText } from './elements.js';
import { GridModel, rowsInView } from './grid-model.js';

const rowHeight = 28; // --row of kit.css
const limits = { rowHeight, spare: 8, most: 180 };

/** `1fr` is at least this wide, so that a narrow page scrolls instead of squeezing it. */
const leastFlexible = '14ch';

/**
 * Columns are `{ key, label, width, align, sortable, cell(row, td) }`. A tree has `levelOf(row)`, from 0 on,
 * and `isExpanded(row)`, undefined where nothing is in it; it asks for the other by the event `expand`.
 * Events: `select`, `open` (detail: the row), `sort` ({ key, descending }), `expand` ({ row, expanded }).
 */
class Grid extends HTMLElement {
    static observedAttributes = ['multiple', 'label'];

    followEnd = false;
    rowClass = () => '';
    levelOf = () => 0;
    isExpanded;
    #model = new GridModel();
    #columns = [];
    #sorting = {};
    #elements = new Map(); // of the rows that are there, by key
    #column = -1; // where the focus is within a row; -1: at the row itself
    #frame;
    #hadFocus = false; // whether rows that were thrown away had it
    #endNext = false; // whether the next picture is to show the end
    #head = element('div', { className: 'grid-head', role: 'rowgroup' });
    #body = element('div', { className: 'grid-rows', role: 'rowgroup' });
    #view = element('div', { className: 'grid-view', role: 'grid' }, this.#head, this.#body);
    #empty = element('p', { className: 'empty', hidden: true });
    #resized = new ResizeObserver(() => this.#render());

    connectedCallback() {
        if (this.#view.parentNode !== this) this.#begin();
        this.#resized.observe(this.#view);
        this.#later();
    }

    disconnectedCallback() {
        this.#resized.disconnect();
    }

    attributeChangedCallback(name, _, value) {
        if (name === 'label') return this.#view.setAttribute('aria-label', value ?? '');
        this.#model.isMultiple = value !== null;
        this.#view.setAttribute('aria-multiselectable', String(value !== null));
    }

    #begin() {
        this.append(this.#view, this.#empty);
        this.#view.addEventListener('scroll', () => this.#render(), { passive: true });
        this.#view.addEventListener('keydown', (event) => this.#pressed(event));
        this.#body.addEventListener('click', (event) => this.#clicked(event));
        this.#body.addEventListener('dblclick', (event) => {
            const index = this.#indexAt(event.target);
            if (index >= 0 && event.target.closest('.grid-toggle') === null) this.#open(index);
        });
    }

    get columns() {
        return this.#columns;
    }

    set columns(columns) {
        this.#columns = columns;
        const least = (width) => (width.endsWith('fr') ? leastFlexible : width);
        const widths = columns.map(({ width = '1fr' }) => width);
        this.style.setProperty(
            '--columns',
            widths
                .map((width) => (width.endsWith('fr') ? `minmax(${leastFlexible}, ${width})` : width))
                .join(' '),
        );
        this.style.setProperty('--least', `calc(${widths.map(least).join(' + ') || '0px'})`);
        this.#view.setAttribute('aria-colcount', columns.length);
        this.#column = Math.min(this.#column, columns.length - 1);
        this.#hadFocus = this.#body.contains(document.activeElement);
        this.#elements.clear();
        this.#body.replaceChildren();
        this.#showHead();
        this.#later();
    }

    get rows() {
        return this.#model.rows;
    }

    set rows(rows) {
        const isAtEnd = this.followEnd && this.#isAtEnd();
        const isChanged = this.#model.setRows(rows);
        this.style.setProperty('--count', rows.length);
        this.#view.setAttribute('aria-rowcount', rows.length + 1);
        this.#later(isAtEnd);
        if (isChanged) this.#tell('select');
    }

    set keyOf(keyOf) {
        this.#model.keyOf = keyOf;
    }

    set emptyText(text) {
        setText(this.#empty, text);
    }

    get selection() {
        return this.#model.selection;
    }

    set selection(keys) {
        if (this.#model.setSelection(keys)) this.#changed();
    }

    /** What the heads say of the order; putting rows in order is up to the page. */
    set sorting({ key, descending = false }) {
        this.#sorting = { key, descending };
        this.#showHead();
    }

    scrollToRow(key) {
        const index = this.#model.indexOf(key);
        if (index < 0) return;
        this.#model.active = index;
        this.#show(index);
    }

    /** Puts the focus where the keyboard is at work; on the row, if one is named. */
    focus(key) {
        if (key !== undefined) this.scrollToRow(key);
        this.#render();
        this.#focusActive();
    }

    #tell(type, detail) {
        this.dispatchEvent(new CustomEvent(type, { detail }));
    }

    #changed() {
        this.#later();
        this.#tell('select');
    }

    #open(index) {
        this.#tell('open', this.#model.rows[index]);
    }

    #isAtEnd() {
        const { scrollTop, clientHeight, scrollHeight } = this.#view;
        return scrollTop + clientHeight >= scrollHeight - rowHeight;
    }

    /** Many changes between two pictures are one. */
    #later(isAtEnd = false) {
        if (isAtEnd) this.#endNext = true;
        this.#frame ??= requestAnimationFrame(() => {
            this.#render(true);
            if (this.#endNext) this.#view.scrollTop = this.#view.scrollHeight;
            this.#endNext = false;
        });
    }

    #showHead() {
        const cells = this.#columns.map(({ key, label, align, sortable }, i) => {
            const { key: by, descending } = this.#sorting;
            const order = by !== key ? 'none' : descending ? 'descending' : 'ascending';
            return element('div', {
                role: 'columnheader',
                textContent: label,
                tabIndex: -1,
                'aria-colindex': i + 1,
                'aria-sort': sortable && order,
                dataset: align === undefined ? {} : { align },
                onclick: () => this.#sort(i),
            });
        });
        const focused = [...(this.#head.firstChild?.children ?? [])].indexOf(document.activeElement);
        this.#head.replaceChildren(element('div', { role: 'row', 'aria-rowindex': 1 }, ...cells));
        if (focused >= 0) cells[focused]?.focus();
        this.#setTabStop();
    }

    #sort(column) {
        const { key, sortable } = this.#columns[column] ?? {};
        if (!sortable) return;
        this.sorting = { key, descending: this.#sorting.key === key && !this.#sorting.descending };
        this.#tell('sort', { ...this.#sorting });
    }

    #render(isRefilled = false) {
        if (isRefilled) {
            cancelAnimationFrame(this.#frame);
            this.#frame = undefined;
        }
        const { rows } = this.#model;
        const isTree = this.isExpanded !== undefined;
        this.#view.setAttribute('role', isTree ? 'treegrid' : 'grid');
        this.#empty.hidden = rows.length > 0;
        const { scrollTop, clientHeight } = this.#view;
        const [first, last] = rowsInView(scrollTop, clientHeight, { ...limits, count: rows.length });
        const wanted = new Set(Array.from({ length: Math.max(0, last - first) }, (_, i) => first + i));
        if (rows.length > 0) wanted.add(this.#model.active); // it may have the focus
        const indices = [...wanted].sort((a, b) => a - b);
        const hadFocus = this.#hadFocus || this.#body.contains(document.activeElement);
        this.#hadFocus = false;
        const spare = this.#takeSpare(indices);
        indices.forEach((index, place) => {
            const key = this.#model.keyAt(index);
            const isThere = this.#elements.has(key);
            const made = this.#elements.get(key) ?? spare.pop() ?? this.#make();
            this.#elements.set(key, made);
            if (!isThere || isRefilled) this.#fill(made, rows[index], key);
            this.#place(made, index, place);
        });
        for (const left of spare) left.remove();
        this.#setTabStop();
        if (hadFocus && !this.#body.contains(document.activeElement)) this.#focusActive();
    }

    /** @returns {HTMLElement[]} Rows that went out of view, for others to use. */
    #takeSpare(indices) {
        const keys = new Set(indices.map((index) => this.#model.keyAt(index)));
        const spare = [];
        for (const [key, row] of this.#elements)
            if (!keys.has(key)) {
                this.#elements.delete(key);
                spare.push(row);
            }
        return spare;
    }

    #make() {
        const cells = this.#columns.map(({ align }, i) =>
            element('div', {
                role: 'gridcell',
                tabIndex: -1,
                'aria-colindex': i + 1,
                dataset: align === undefined ? {} : { align },
            }),
        );
        return element('div', { role: 'row', tabIndex: -1 }, ...cells);
    }

    #fill(made, row, key) {
        made.dataset.key = key;
        made.className = this.rowClass(row);
        this.#columns.forEach(({ key: member, cell }, i) => {
            const place = made.children[i];
            if (cell === undefined) setText(place, String(row[member] ?? ''));
            else {
                place.replaceChildren();
                cell(row, place);
            }
            place.title = place.textContent;
        });
        if (this.isExpanded !== undefined) this.#fillTree(made, row);
    }

    #fillTree(made, row) {
        const [level, isExpanded] = [this.levelOf(row), this.isExpanded(row)];
        made.setAttribute('aria-level', level + 1);
        if (isExpanded === undefined) made.removeAttribute('aria-expanded');
        else made.setAttribute('aria-expanded', String(isExpanded));
        const textContent = isExpanded === undefined ? '' : isExpanded ? '▾' : '▸';
        const toggle = element('span', { className: 'grid-toggle', 'aria-hidden': 'true', textContent });
        toggle.style.setProperty('--level', level);
        made.firstChild.querySelector('.grid-toggle')?.remove();
        made.firstChild.prepend(toggle);
    }

    /** Rows stand in their order, as readers go through them; one that stays where it is keeps the focus. */
    #place(made, index, place) {
        if (this.#body.children[place] !== made)
            this.#body.insertBefore(made, this.#body.children[place] ?? null);
        made.style.setProperty('--at', index);
        made.setAttribute('aria-rowindex', index + 2);
        made.setAttribute('aria-selected', String(this.#model.isSelected(this.#model.keyAt(index))));
    }

    /** The active row, or a cell of it; where there is no row, the first head. */
    #activeElement() {
        const row = this.#elements.get(this.#model.keyAt(this.#model.active));
        return row?.children[this.#column] ?? row ?? this.#head.firstChild?.firstChild;
    }

    #setTabStop() {
        const stop = this.#activeElement();
        for (const old of this.#view.querySelectorAll('[tabindex="0"]')) if (old !== stop) old.tabIndex = -1;
        if (stop) stop.tabIndex = 0;
    }

    #focusActive() {
        const target = this.#activeElement();
        target?.focus({ preventScroll: true });
        if (this.#column >= 0) target?.scrollIntoView({ block: 'nearest', inline: 'nearest' });
    }

    #show(index) {
        const head = this.#head.offsetHeight;
        const [top, height] = [index * rowHeight, this.#view.clientHeight - head];
        if (top < this.#view.scrollTop) this.#view.scrollTop = top;
        else if (top + rowHeight > this.#view.scrollTop + height)
            this.#view.scrollTop = top + rowHeight - height;
        this.#render(true);
    }

    #indexAt(target) {
        const row = target.closest('[role=row]');
        return row === null ? -1 : this.#model.indexOf(row.dataset.key);
    }

    #clicked(event) {
        const index = this.#indexAt(event.target);
        if (index < 0) return;
        const row = this.#model.rows[index];
        const isExpanded = event.target.closest('.grid-toggle') ? this.isExpanded?.(row) : undefined;
        if (isExpanded !== undefined) this.#tell('expand', { row, expanded: !isExpanded });
        this.#column = -1;
        this.#choose(index, { extend: event.shiftKey, toggle: event.ctrlKey || event.metaKey });
    }

    #choose(index, how) {
        const isChanged = this.#model.choose(index, how);
        this.#show(this.#model.active);
        this.#focusActive();
        if (isChanged) this.#tell('select');
    }

    #pressed(event) {
        if (event.altKey || event.target.closest('input, select, textarea, button, a')) return;
        const isHandled = this.#head.contains(event.target)
            ? this.#pressedInHead(event)
            : this.#pressedInBody(event);
        if (isHandled) event.preventDefault();
    }

    #pressedInHead({ key }) {
        const heads = [...this.#head.firstChild.children];
        const at = heads.indexOf(document.activeElement);
        const steps = { ArrowLeft: at - 1, ArrowRight: at + 1, Home: 0, End: heads.length - 1 };
        if (key in steps) heads[steps[key]]?.focus();
        else if (key === 'Enter' || key === ' ') this.#sort(at);
        else if (key === 'ArrowDown' && this.#model.rows.length > 0) this.focus();
        else return false;
        return true;
    }

    #pressedInBody(event) {
        const { key, shiftKey } = event;
        const isControl = event.ctrlKey || event.metaKey;
        const { active, rows } = this.#model;
        const page = Math.max(
            1,
            Math.floor((this.#view.clientHeight - this.#head.offsetHeight) / rowHeight) - 1,
        );
        const targets = {
            ArrowUp: active - 1,
            ArrowDown: active + 1,
            Home: 0,
            End: rows.length - 1,
            PageUp: Math.max(0, active - page),
            PageDown: Math.min(rows.length - 1, active + page),
        };
        if (key === 'ArrowUp' && active === 0)
            this.#head.firstChild.children[Math.max(0, this.#column)].focus();
        else if (key in targets) this.#move(targets[key], isControl, shiftKey);
        else if (key === ' ') this.#choose(active, { extend: shiftKey, toggle: !shiftKey });
        else if (key === 'Enter') this.#open(active);
        else if (key.toLowerCase() === 'a' && isControl) {
            if (this.#model.chooseAll()) this.#changed();
        } else if (key === 'ArrowRight' || key === 'ArrowLeft') this.#sideways(key === 'ArrowRight' ? 1 : -1);
        else return false;
        return true;
    }

    #move(index, isControl, extend) {
        if (index < 0 || index >= this.#model.rows.length) return;
        if (!isControl) return this.#choose(index, { extend });
        this.#model.active = index;
        this.#show(index);
        this.#focusActive();
    }

    /** At a row of a tree it opens and shuts, or goes to what holds it; else it goes through the cells. */
    #sideways(step) {
        const { active, rows } = this.#model;
        const row = rows[active];
        const isExpanded = this.#column < 0 ? this.isExpanded?.(row) : undefined;
        if (isExpanded === step < 0) return this.#tell('expand', { row, expanded: !isExpanded });
        if (step < 0 && this.#column < 0) {
            const level = this.levelOf(row);
            const holder = rows.slice(0, active).findLastIndex((other) => this.levelOf(other) < level);
            return this.#move(holder, false, false);
        }
        this.#column = Math.min(this.#column + step, this.#columns.length - 1);
        this.#setTabStop();
        this.#focusActive();
    }
}

customElements.define('ac-grid', Grid);
