/**
 * Makes an element. What starts with `on` listens, `dataset` holds data, names with a hyphen and those that
 * the element has no property for are attributes; of these null, undefined and false are none.
 * @param {string} tag
 * @param {object} [properties]
 * @param {...(Node | string | null | undefined | false)} children
 * @returns {HTMLElement}
 */
export function element(tag, properties = {}, ...children) {
    const made = document.createElement(tag);
    for (const [name, value] of Object.entries(properties)) {
        if (name === 'dataset') Object.assign(made.dataset, value);
        else if (name.startsWith('on')) made.addEventListener(name.slice(2).toLowerCase(), value);
        else if (name in made && !name.includes('-')) made[name] = value;
        else if (value !== null && value !== undefined && value !== false)
            made.setAttribute(name, value === true ? '' : value);
    }
    made.append(...children.filter((child) => child !== null && child !== undefined && child !== false));
    return made;
}

/** Sets a text only where it differs, so that nothing is announced or selected anew. */
export function setText(node, text) {
    if (node.textContent !== text) node.textContent = text;
}
