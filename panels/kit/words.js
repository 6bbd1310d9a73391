// Numbers that records have for words, by the words; and what kinds of panels are called.

import model from '../client/model.js';

function numbersOf(name) {
    const { words, values } = model.forms.find((form) => form.name === name);
    return Object.fromEntries(words.map((word, i) => [word, values[i]]));
}

export const kindNames = { library: 'library', mediaCollection: 'media collection' };

export const clipTypes = numbersOf('clipType');
export const transferTypes = numbersOf('transferType');
export const overwriting = numbersOf('overwrite').Overwrite;
export const refusal = numbersOf('boolean').false;
