import { type ComponentMap, inverted } from './component_map';
import type { MapEntry, MapSource } from './map_source';
import type { Component, Run } from './run';

/** A map with the sign that it is shown with. */
export async function shownMap(source: MapSource, entry: MapEntry): Promise<ComponentMap> {
    const map = await source.maps.get(entry.index);
    return source.signs.isFlipped(entry) ? inverted(map) : map;
}

/** The time course, rescaled to 0..1 as in the files, with the sign that it is shown with. */
export function shownCourse(run: Run, component: Component): number[] {
    return run.signs.isFlipped(component) ? component.timeCourse.map((value) => 1 - value) : component.timeCourse;
}
