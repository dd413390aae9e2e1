import { short } from '../numbers';
import type { Group } from './group';

const UNITS = { none: '', percent: ' %', sd: ' SD' };

/** "0.84 %": three digits, with the unit of the prepared data. */
export function amplitudeText({ plan }: Group, value: number): string {
    return `${short(value)}${UNITS[plan.Preparation.Scaling]}`;
}
