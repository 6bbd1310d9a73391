// Questions that the page asks, each in a dialog with labelled fields.

import { element, setText } from './elements.js';

/** What makes the control of a field, by the field's type; 'text' where a field names none. */
const controls = {
    select: ({ options, value }) => {
        const choices = options.map(([word, label]) =>
            element('option', { value: word, textContent: label, selected: word === value }),
        );
        return element('select', {}, ...choices);
    },
    textarea: ({ value = '' }) => element('textarea', { value, spellcheck: false }),
    checkbox: ({ value = false }) => element('input', { type: 'checkbox', checked: value }),
    number: ({ value = '', min, max }) => element('input', { type: 'number', value, min, max }),
    password: () => element('input', { type: 'password', autocomplete: 'off' }),
    text: ({ value = '' }) =>
        element('input', { type: 'text', value, autocomplete: 'off', spellcheck: false }),
};

let count = 0;
let obstacle = () => undefined;

/** @param {() => string | undefined} reason Why no answer is of use now: a dialog then stays as it is. */
export function setObstacle(reason) {
    obstacle = reason;
}

class Field {
    constructor(field) {
        this.name = field.name;
        this.field = field;
        const id = `field-${++count}`;
        this.control = (controls[field.type] ?? controls.text)(field);
        this.control.id = id;
        this.control.name = field.name;
        this.error = element('p', { className: 'error', id: `${id}-error`, hidden: true });
        const hint =
            field.hint && element('p', { className: 'note', id: `${id}-hint`, textContent: field.hint });
        this.control.setAttribute('aria-describedby', `${hint ? `${id}-hint ` : ''}${id}-error`);
        if (field.required) this.control.setAttribute('aria-required', 'true');
        const label =
            field.type === 'checkbox'
                ? element('label', { className: 'tick' }, this.control, field.label)
                : element('label', { htmlFor: id, textContent: field.label });
        const parts = field.type === 'checkbox' ? [label] : [label, this.control];
        this.block = element('div', { className: 'field' }, ...parts, this.error, hint);
    }

    get value() {
        const { type } = this.field;
        return type === 'checkbox' ? this.control.checked : this.control.value;
    }

    /** @returns {boolean} Whether the value is one; what is wrong stands at the field. */
    check(values) {
        const { required, label, check } = this.field;
        const isMissing = required && String(this.value).trim() === '';
        const problem = isMissing ? `Fill in “${label}”.` : check?.(this.value, values);
        setText(this.error, problem ?? '');
        this.error.hidden = problem === undefined;
        this.control.setAttribute('aria-invalid', String(problem !== undefined));
        return problem === undefined;
    }
}

/**
 * Asks until the values are right or the person leaves.
 * @param {{title: string, text?: string, fields: object[], action: string}} question A field has `name`,
 *     `label`, and may have `type`, `value`, `required`, `hint`, `options` ([word, label] each),
 *     `check(value, values)`, which says what is wrong, and `when(values)`, whether it is asked for at all.
 * @returns {Promise<object | null>} Values by name, without those not asked for; null when the person leaves.
 */
export function ask({ title, text, fields: described, action }) {
    const before = document.activeElement;
    const fields = described.map((field) => new Field(field));
    const allValues = () => Object.fromEntries(fields.map(({ name, value }) => [name, value]));
    const asked = (values) => fields.filter(({ field }) => field.when?.(values) ?? true);
    const heading = element('h2', { textContent: title, id: `dialog-${++count}` });
    const dialog = element('dialog', { 'aria-labelledby': heading.id });
    const hindered = element('p', { className: 'error', role: 'alert', hidden: true });
    const showAsked = () => {
        const shown = new Set(asked(allValues()));
        for (const field of fields) field.block.hidden = !shown.has(field);
    };
    return new Promise((resolve) => {
        const end = (values) => {
            dialog.remove(); // with all that was typed
            before?.focus?.();
            resolve(values);
        };
        const submit = (event) => {
            event.preventDefault();
            const values = allValues();
            const wrong = asked(values).filter((field) => !field.check(values));
            if (wrong.length > 0) return wrong[0].control.focus();
            const reason = obstacle();
            hindered.hidden = reason === undefined;
            setText(hindered, reason ?? '');
            if (reason !== undefined) return undefined;
            const names = new Set(asked(values).map(({ name }) => name));
            return end(Object.fromEntries(Object.entries(values).filter(([name]) => names.has(name))));
        };
        dialog.append(
            element(
                'form',
                { noValidate: true, onsubmit: submit, oninput: showAsked },
                heading,
                text && element('p', { className: 'note', textContent: text }),
                ...fields.map(({ block }) => block),
                hindered,
                element(
                    'div',
                    { className: 'toolbar' },
                    element('button', { type: 'button', textContent: 'Cancel', onclick: () => end(null) }),
                    element('button', { className: 'primary', textContent: action }),
                ),
            ),
        );
        dialog.addEventListener('cancel', (event) => {
            event.preventDefault();
            end(null);
        });
        dialog.addEventListener('close', () => end(null)); // browsers close one that does not want to
        showAsked();
        document.body.append(dialog);
        dialog.showModal();
        const first = fields.find(({ block }) => !block.hidden)?.control;
        first?.focus();
        first?.select?.();
    });
}
