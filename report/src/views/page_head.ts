import { h } from '../dom';
import { currentTheme, onThemeChange, toggleTheme } from '../theme';

/** The header: kind and name of the page, links to its views, printing through `onPrint`, light or dark. */
export function pageHead(
    kind: string,
    name: string,
    views: [href: string, title: string][],
    onPrint: () => void,
): { element: HTMLElement; mark: (path: string) => void } {
    const links = views.map(([href, title]) => h('a', { href, class: 'tab' }, title));
    const theme = h('button', { type: 'button', class: 'button button-icon', id: 'theme', onclick: toggleTheme });
    const describe = (): void => {
        const next = currentTheme() === 'dark' ? 'light' : 'dark';
        theme.textContent = next === 'dark' ? '\u263e' : '\u2600';
        theme.setAttribute('aria-label', `Switch to ${next} colours`);
        theme.title = `Switch to ${next} colours`;
    };
    onThemeChange(describe);
    describe();
    const element = h(
        'header',
        { class: 'page-head' },
        h('div', { class: 'page-title' }, h('span', { class: 'page-kind' }, kind), h('h1', {}, name)),
        h('nav', { 'aria-label': 'Parts of the report' }, ...links),
        h(
            'div',
            { class: 'page-actions' },
            h('button', { type: 'button', class: 'button', onclick: onPrint }, 'Print'),
            theme,
        ),
    );
    return {
        element,
        mark: (path) =>
            links.forEach((link) => {
                const own = link.getAttribute('href')!.slice(1);
                const here = own === '/' ? path === '/' : path.startsWith(own);
                if (here) link.setAttribute('aria-current', 'page');
                else link.removeAttribute('aria-current');
            }),
    };
}
