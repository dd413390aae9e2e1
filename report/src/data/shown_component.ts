import { type ComponentMap, inverted } from './component_map';
import type { Component, Run } from './run';

/** The map of a component with the sign that it is shown with. */
export async function shownMap(run: Run, component: Component): Promise<ComponentMap> {
    const map = await run.maps.get(component.index);
    return run.signs.isFlipped(component) ? inverted(map) : map;
}

/** The time course, rescaled to 0..1 as in the files, with the sign that it is shown with. */
export function shownCourse(run: Run, component: Component): number[] {
    return run.signs.isFlipped(component) ? component.timeCourse.map((value) => 1 - value) : component.timeCourse;
}
