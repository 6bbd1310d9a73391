// How lists are searched and put in order. Without DOM.

const { compare: compareTexts } = new Intl.Collator('en', { numeric: true });

/**
 * @param {object[]} items
 * @param {(item: object) => string | number | bigint} valueOf By what: texts as people read them, `clip 2`
 *     before `clip 10`. Those alike stay in their order.
 */
export function inOrder(items, valueOf, descending = false) {
    const sign = descending ? -1 : 1;
    const compare = (a, b) => (typeof a === 'string' ? compareTexts(a, b) : a < b ? -1 : a > b ? 1 : 0);
    return items
        .map((item) => [valueOf(item), item])
        .sort(([a], [b]) => sign * compare(a, b))
        .map(([, item]) => item);
}

/** Letters with marks are one character or two, by where a name comes from. */
const folded = (text) => text.normalize().toLowerCase();

/** @returns {((text: string) => boolean) | undefined} Whether a text holds all words; undefined without. */
export function finderOf(search) {
    const words = folded(search).split(/\s+/).filter(Boolean);
    if (words.length === 0) return undefined;
    return (text) => {
        const looked = folded(text);
        return words.every((word) => looked.includes(word));
    };
}
