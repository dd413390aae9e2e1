// Whether a result of the page and one of the command are the same.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { fileURLToPath } from 'node:url';
import { PYTHON } from './page.mjs';

const COMPARE = fileURLToPath(new URL('compare_results.py', import.meta.url));

// Smallest |r| between maps, and the largest differences in the tables.
function compared(a, b) {
    return JSON.parse(execFileSync(PYTHON, [COMPARE, a, b], { encoding: 'utf8' }));
}

/** Asserts that two folders hold the same result up to rounding. */
export function assertAgree(inTab, native) {
    const { smallest_r, tables } = compared(inTab, native);
    assert.ok(smallest_r > 0.9999, `|r| ${smallest_r}`);
    for (const [table, difference] of Object.entries(tables)) assert.ok(difference <= 1e-5, `${table}: ${difference}`);
}
