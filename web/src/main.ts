// Starts the page: checks the browser, unpacks the engine, shows the input.
import { startTheme, toggleTheme } from '../../report/src/theme';
import { App } from './app';
import { Engine } from './engine/engine';
import { missingSupport } from './engine/support';

async function start(): Promise<void> {
    startTheme();
    document.querySelector('#theme')!.addEventListener('click', toggleTheme);
    const place = document.querySelector<HTMLElement>('#app')!;
    const opening = place.querySelector('.opening')!;
    const missing = missingSupport();
    if (missing) {
        opening.textContent = missing;
        return;
    }
    try {
        new App(await Engine.unpack(), place);
    } catch (error) {
        opening.textContent = `The page cannot start: ${error instanceof Error ? error.message : String(error)}.`;
    }
}

void start();
