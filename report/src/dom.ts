type Child = Node | string | null | undefined | false;
type Attributes = Record<string, string | number | boolean | null | undefined | ((event: Event) => void)>;

/**
 * Creates an element with attributes and children. Attributes named "on..." are listeners; true sets an attribute
 * without a value, false, null and undefined leave it out.
 */
export function h<K extends keyof HTMLElementTagNameMap>(
    tag: K,
    attributes: Attributes = {},
    ...children: Child[]
): HTMLElementTagNameMap[K] {
    const element = document.createElement(tag);
    for (const [name, value] of Object.entries(attributes)) {
        if (typeof value === 'function') element.addEventListener(name.slice(2), value);
        else if (value === true) element.setAttribute(name, '');
        else if (value !== false && value !== null && value !== undefined) element.setAttribute(name, String(value));
    }
    append(element, children);
    return element;
}

export function append(parent: Node, children: Child[]): void {
    for (const child of children) {
        if (child !== null && child !== undefined && child !== false) {
            parent.appendChild(typeof child === 'string' ? document.createTextNode(child) : child);
        }
    }
}
