// The columns that people add to the collection, and what stands in them. Without DOM.

export class Columns {
    #names = new Map(); // by id
    #values = new Map(); // by asset, then by column

    /** @returns {{id: string, name: string}[]} */
    get all() {
        return [...this.#names].map(([id, name]) => ({ id, name }));
    }

    nameOf(id) {
        return this.#names.get(id);
    }

    /**
     * What the host lists is so; values of columns that stay are kept. @returns {boolean} Whether it is
     * other.
     */
    heardState(columns) {
        const told = columns.map(({ id, name }) => [id.toLowerCase(), name]);
        if (JSON.stringify(told) === JSON.stringify([...this.#names])) return false;
        this.#names = new Map(told);
        this.#forget();
        return true;
    }

    /** Adds a column, or renames the one that has the id. */
    put(id, name) {
        this.#names.set(id, name);
    }

    remove(id) {
        this.#names.delete(id);
        this.#forget();
    }

    #forget() {
        for (const values of this.#values.values())
            for (const id of [...values.keys()]) if (!this.#names.has(id)) values.delete(id);
    }

    fill(assetID, values) {
        this.#values.set(assetID, new Map([...(this.#values.get(assetID) ?? []), ...values]));
    }

    valueOf(assetID, id) {
        return this.#values.get(assetID)?.get(id) ?? '';
    }

    /** @returns {string | undefined} Why a column cannot be called so. */
    problemOf(name, own) {
        const isTaken = this.all.some(
            (column) => column.id !== own && column.name.toLowerCase() === name.trim().toLowerCase(),
        );
        return isTaken ? 'There is a column of this name. Choose another.' : undefined;
    }
}
