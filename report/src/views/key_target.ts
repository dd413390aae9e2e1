/** Whether a key that was pressed is one of the page's, rather than a text field's, a slider's or a dialog's. */
export function isForPage(event: KeyboardEvent): boolean {
    const target = event.target as HTMLElement;
    const sliding = target.matches('input[type=range]') && event.key.startsWith('Arrow');
    const typing = sliding || target.matches('input:not([type=checkbox], [type=range]), select, textarea');
    if (typing || event.ctrlKey || event.altKey || event.metaKey) return false;
    return document.querySelector('dialog[open]') === null;
}
