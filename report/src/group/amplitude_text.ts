import type { Group } from './group';

const UNITS = { none: '', percent: ' %', sd: ' SD' };

/** "0.840 %": three digits, with the unit of the prepared data. */
export function amplitudeText({ plan }: Group, value: number): string {
    const digits = value >= 1e-4 && value < 1000 ? value.toPrecision(3) : value.toExponential(2);
    return `${digits}${UNITS[plan.Preparation.Scaling]}`;
}
