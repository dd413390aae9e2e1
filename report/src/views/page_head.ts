import type { Run } from '../data/run';
import { h } from '../dom';
import { currentTheme, onThemeChange, toggleTheme } from '../theme';

/** The header: name of the run, links to the views, printing through `onPrint`, light or dark. */
export function pageHead(
    run: Run,
    denoised: boolean,
    onPrint: () => void,
): { element: HTMLElement; mark: (path: string) => void } {
    const links = [
        ...(denoised ? [['#/denoising', 'Denoising']] : []),
        ['#/', 'Overview'],
        ['#/component', 'Component'],
        ['#/methods', 'Methods'],
    ].map(([href, title]) => h('a', { href, class: 'tab' }, title));
    const theme = h('button', { type: 'button', class: 'button button-icon', id: 'theme', onclick: toggleTheme });
    const describe = (): void => {
        const next = currentTheme() === 'dark' ? 'light' : 'dark';
        theme.textContent = next === 'dark' ? '\u263e' : '\u2600';
        theme.setAttribute('aria-label', `Switch to ${next} colours`);
        theme.title = `Switch to ${next} colours`;
    };
    onThemeChange(describe);
    describe();
    const { Label } = run.facts.Settings;
    const element = h(
        'header',
        { class: 'page-head' },
        h(
            'div',
            { class: 'page-title' },
            h('span', { class: 'page-kind' }, 'ICA report'),
            h('h1', {}, Label ? `${Label} \u00b7 ${run.name}` : run.name),
        ),
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
