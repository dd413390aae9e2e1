// The page over all runs of a study.
import { blocks } from './data/blocks';
import type { Study } from './study/study';
import { StudyView } from './study/study_view';
import { startTheme } from './theme';

async function start(): Promise<void> {
    startTheme();
    const study = JSON.parse(await blocks.text('study')) as Study;
    document.title = `ICA runs: ${study.name}`;
    document.querySelector('#app')!.replaceChildren(new StudyView(study).element);
    document.body.dataset.shown = 'runs';
}

void start();
