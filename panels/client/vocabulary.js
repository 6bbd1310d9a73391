// The elements and attributes of texts as a tree, each with the member of the record that it carries.

import model from './model.js';

const records = new Map(
    model.records.map(({ name, members }) => [
        name,
        new Map(members.map((member) => [member.name, member.type])),
    ]),
);
const forms = new Map(model.forms.map((form) => [form.name, form]));
const placesByPath = new Map(model.places.map((place) => [place.path, place]));

/** @returns {Map<string, string>} The types of a record's members by their names. */
export const membersOf = (record) => records.get(record);

/** @returns {string | undefined} The record that a type is, or holds as items. */
export function recordIn(type) {
    return /^(?:list:)?(?:nullable:)?record:(.*)/.exec(type)?.[1];
}

/** @returns {{record: string, name: string, type: string}[]} The members that lead to one within a record. */
export function steps(record, path) {
    return path.split('.').map((name) => {
        const step = { record, name, type: membersOf(record).get(name) };
        record = recordIn(step.type);
        return step;
    });
}

/** Where an item's members begin: the list's, whose items are records. */
function scopeOf(path) {
    for (let at = path; at !== ''; at = parentOf(at)) {
        const place = placesByPath.get(at);
        if (place?.many && place.member !== undefined && recordIn(typeOf(place.member)) !== undefined)
            return place.member;
    }
    return '';
}

const parentOf = (path) => path.replace(/(?:^|\/)[^/]*$/, '');
const typeOf = (member) => steps('Message', member).at(-1).type;
const withoutScope = (member, scope) => (scope === '' ? member : member.slice(scope.length + 1));

/** What carries a value: the text of an element, or an attribute. */
class Slot {
    constructor(place, scope) {
        this.place = place;
        this.form = place.form;
        this.words = forms.get(place.form).words;
        this.values = forms.get(place.form).values;
        this.targets = [];
        if (place.member === undefined) return;
        // In a list that can be one of two, a value goes to the items of either.
        const list = placesByPath.get(place.path.split(/[/@]/)[0]);
        const members = list.most > 1 ? [place.member, ...(place.also ?? [])] : [place.member];
        for (const member of members) {
            const [root] = member.split('.');
            const record = scope === '' ? 'Message' : recordIn(typeOf(list.most > 1 ? root : scope));
            const within = scope === '' ? member : withoutScope(member, list.most > 1 ? root : scope);
            this.targets.push({ root, steps: within === '' ? [] : steps(record, within) });
        }
        this.type = typeOf(place.member);
        this.isCounted = place.form === 'time';
    }
}

/** An element. */
class Element {
    constructor(place, name, scope) {
        this.place = place;
        this.name = name;
        this.read = place.read ?? false;
        this.written = place.written ?? false;
        this.many = place.many ?? false;
        this.attributes = new Map();
        this.children = new Map();
        this.slot = forms.has(place.form) ? new Slot(place, scope) : undefined;
        if (this.many && place.member !== undefined) this.addList(place, scope);
    }

    /** Of an item: the list that it is in, and what its items are. Of two lists, the second one, too. */
    addList(place, scope) {
        const outer = scope === place.member ? scopeOf(parentOf(place.path)) : scope;
        this.lists = [place.member, ...(this.isOfTwo(place) ? place.also : [])].map((member) => {
            const type = typeOf(member);
            return { member, type, record: recordIn(type), steps: outerSteps(member, outer) };
        });
    }

    isOfTwo(place) {
        return placesByPath.get(parentOf(place.path))?.most > 1;
    }

    child(name) {
        return this.children.get(name) ?? this.children.get('*');
    }
}

function outerSteps(member, scope) {
    return steps(scope === '' ? 'Message' : recordIn(typeOf(scope)), withoutScope(member, scope));
}

/** A time that is written as a length begins at another one, of which the model says that it changes it. */
function findBegins(elements) {
    for (const { slot, place } of elements.values())
        if (slot?.isCounted)
            slot.beginsAt = [...elements.values()].find(
                (other) => other.slot?.isCounted && (other.place.also ?? []).includes(place.member),
            )?.slot;
}

/** Of two attributes for one member, a flag beside it says which of them is meant. */
function findFlags(attributes) {
    for (const slot of attributes.values())
        for (const hider of slot.place.hiddenBy ?? []) {
            const other = [...attributes.values()].find((candidate) => candidate.place.path === hider);
            const flag = slot.place.also?.find((member) => typeOf(member) === 'boolean');
            if (flag !== undefined) {
                slot.flag = { name: flag.split('.').at(-1), value: true };
                other.flag = { name: slot.flag.name, value: false };
            }
        }
}

/** A list within an item of its kind holds what the list around it holds, but is a member of that item. */
function nestedList(place) {
    const outer = byPath.get(place.sameAs);
    const element = new Element(place, outer.name, scopeOf(place.path));
    for (const item of outer.children.values()) {
        const nested = Object.create(item);
        nested.lists = item.lists.map((list) => ({
            ...list,
            member: place.member,
            steps: outerSteps(place.member, list.member),
        }));
        element.children.set(item.name, nested);
    }
    return element;
}

const byPath = new Map();

function makeTree() {
    const root = new Element({ path: '', form: 'block', read: true, written: true }, '', '');
    byPath.set('', root);
    for (const place of model.places) {
        const [path, attribute] = place.path.split('@');
        const scope = scopeOf(path);
        if (attribute !== undefined) {
            byPath.get(path).attributes.set(attribute, new Slot(place, scope));
            continue;
        }
        const name = path.split('/').at(-1);
        const element = place.sameAs === undefined ? new Element(place, name, scope) : nestedList(place);
        byPath.set(path, element);
        byPath.get(parentOf(path)).children.set(name, element);
    }
    for (const element of byPath.values()) {
        findBegins(element.children);
        findFlags(element.attributes);
    }
    return root;
}

/** What stands in the root of a text. */
export const vocabulary = makeTree();
