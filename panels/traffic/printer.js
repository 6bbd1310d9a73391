// Texts as a person reads them: an element a line, indented. It takes what comes, since what the host takes a
// layer of references off need not be well-formed; nothing is lost, and each part knows where it stood.

const sections = [
    ['comment', '<!--', '-->'],
    ['section', '<![CDATA[', ']]>'],
    ['instruction', '<?', '?>'],
    ['instruction', '<!', '>'],
];
const tagStart = /<(\/?)([^\s/>=<"'!?&;]+)/y;
const tagRest = /(?:\s+[^\s/>=<"']+\s*=\s*(?:"[^"]*"|'[^']*'))*\s*(\/?)>/y;
const bracket = /[<>]/g;

function matchAt(pattern, text, at) {
    pattern.lastIndex = at;
    return pattern.exec(text);
}

/** Goes through a text; what it looks for in vain it looks for once. */
class Scanner {
    #text;
    #hopeless = new Set();

    constructor(text) {
        this.#text = text;
    }

    /** @returns {{kind: string, text: string, at: number, name?: string}[]} All of the text, in order. */
    parts() {
        const found = [];
        let from = 0;
        for (let at = this.#text.indexOf('<'); at >= 0;) {
            const markup = this.#markupAt(at);
            if (markup !== undefined) {
                if (at > from) found.push(this.#part('text', from, at));
                found.push(markup);
                from = at + markup.text.length;
            }
            at = this.#text.indexOf('<', markup === undefined ? at + 1 : from);
        }
        if (from < this.#text.length) found.push(this.#part('text', from, this.#text.length));
        return found;
    }

    #part(kind, at, end, name) {
        return { kind, text: this.#text.slice(at, end), at, name };
    }

    /** What begins with this <; undefined where it begins nothing. */
    #markupAt(at) {
        const section = sections.find(([, begin]) => this.#text.startsWith(begin, at));
        if (section === undefined) return this.#tagAt(at);
        const [kind, begin, end] = section;
        const found = this.#hopeless.has(begin) ? -1 : this.#text.indexOf(end, at + begin.length);
        if (found >= 0) return this.#part(kind, at, found + end.length);
        this.#hopeless.add(begin);
        return undefined;
    }

    #tagAt(at) {
        const start = matchAt(tagStart, this.#text, at);
        if (start === null) return undefined;
        const [whole, slash, name] = start;
        const rest = matchAt(tagRest, this.#text, at + whole.length);
        const end = rest === null ? this.#oddEnd(at + whole.length) : at + whole.length + rest[0].length;
        if (end === undefined) return undefined;
        const isEmpty = this.#text[end - 2] === '/';
        return this.#part(slash === '/' ? 'end' : isEmpty ? 'empty' : 'begin', at, end, name);
    }

    /** With quotes that do not pair a tag goes to the next >, as far as no other tag begins before it. */
    #oddEnd(at) {
        const next = matchAt(bracket, this.#text, at);
        return next?.[0] === '>' ? next.index + 1 : undefined;
    }
}

export const partsOf = (text) => new Scanner(text).parts();

const isBlank = ({ kind, text }) => kind === 'text' && /^\s*$/.test(text);

/** How many parts from here on belong on one line: an element with a text alone, or one part. */
function lengthOfLine(found, i) {
    if (found[i].kind !== 'begin') return 1;
    let end = i + 1;
    while (['text', 'section'].includes(found[end]?.kind)) ++end;
    return found[end]?.kind === 'end' && found[end].name === found[i].name ? end + 1 - i : 1;
}

/**
 * @param {string} text
 * @returns {{depth: number, parts: {kind: string, text: string, at: number}[]}[]} Lines. Blanks between
 *     elements are gone, and nothing else is.
 */
export function print(text) {
    const all = partsOf(text);
    // a blank between a tag and its end tag is the text of the element
    const found = all.filter(
        (part, i) => !isBlank(part) || (all[i - 1]?.kind === 'begin' && all[i + 1]?.name === all[i - 1].name),
    );
    const lines = [];
    const open = [];
    for (let i = 0; i < found.length;) {
        const count = lengthOfLine(found, i);
        const line = found.slice(i, i + count);
        const [{ kind, name }] = line;
        if (kind === 'end' && open.includes(name)) while (open.pop() !== name);
        lines.push({ depth: open.length, parts: line });
        if (kind === 'begin' && count === 1) open.push(name);
        i += count;
    }
    return lines;
}

/** @returns {number} Where a line and column, counted from 1 on, stand in the text. */
export function placeOf(text, line, column) {
    let at = 0;
    for (let i = 1; i < line; ++i) {
        const next = text.indexOf('\n', at);
        if (next < 0) break;
        at = next + 1;
    }
    return Math.min(text.length, at + column - 1);
}
