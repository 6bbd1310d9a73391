// Which rows of a grid are selected, which one is active, which are in view. Without DOM.

/**
 * @returns {[number, number]} The rows from the first up to the second are to be there, `spare` around the
 *     view.
 */
export function rowsInView(top, height, { rowHeight, count, spare, most }) {
    const first = Math.max(0, Math.min(Math.floor(top / rowHeight), count) - spare);
    const last = Math.min(count, Math.ceil((top + height) / rowHeight) + spare);
    return [first, Math.min(last, first + most)];
}

export class GridModel {
    isMultiple = false;
    keyOf = (row) => row.key;
    #rows = [];
    #keys = [];
    #indices = new Map();
    #selection = new Set();
    #active = 0;
    #anchor; // key of the row at which a range begins

    get rows() {
        return this.#rows;
    }

    /** What is not among the rows cannot be selected: nobody would see what an action is about. */
    setRows(rows) {
        const activeKey = this.#keys[this.#active];
        this.#rows = rows;
        this.#keys = rows.map(this.keyOf);
        this.#indices = new Map(this.#keys.map((key, i) => [key, i]));
        this.#active = this.#indices.get(activeKey) ?? Math.max(0, Math.min(this.#active, rows.length - 1));
        return this.#select([...this.#selection].filter((key) => this.#indices.has(key)));
    }

    keyAt(index) {
        return this.#keys[index];
    }

    indexOf(key) {
        return this.#indices.get(key) ?? -1;
    }

    get active() {
        return this.#active;
    }

    set active(index) {
        if (index >= 0 && index < this.#rows.length) this.#active = index;
    }

    get selection() {
        return new Set(this.#selection);
    }

    isSelected(key) {
        return this.#selection.has(key);
    }

    /** @returns {boolean} Whether it changed, as of the functions below. */
    setSelection(keys) {
        return this.#select([...keys].filter((key) => this.#indices.has(key)));
    }

    #select(keys) {
        const isSame = keys.length === this.#selection.size && keys.every((key) => this.#selection.has(key));
        if (!isSame) this.#selection = new Set(keys);
        return !isSame;
    }

    /**
     * Makes a row active and selects it: alone, up to it from where the last range began, or the other way.
     */
    choose(index, { extend = false, toggle = false } = {}) {
        if (index < 0 || index >= this.#rows.length) return false;
        this.#active = index;
        const key = this.#keys[index];
        if (this.isMultiple && extend) {
            const begin = this.#indices.get(this.#anchor) ?? index;
            return this.#select(this.#keys.slice(Math.min(begin, index), Math.max(begin, index) + 1));
        }
        this.#anchor = key;
        if (!toggle || !this.#selection.has(key))
            return this.#select(toggle && this.isMultiple ? [...this.#selection, key] : [key]);
        return this.#select([...this.#selection].filter((other) => other !== key));
    }

    chooseAll() {
        return this.isMultiple && this.#select([...this.#keys]);
    }
}
