/** A remark of znica about the input. */
export interface InputNote {
    Code: string; // what it is about, such as "frequency-bands"; empty in results that hold the sentence alone
    Text: string;
}

/** The notes as decomposition.json holds them, in one form: older results have sentences without a code. */
export function inputNotes(stored: (InputNote | string)[] = []): InputNote[] {
    return stored.map((note) => (typeof note === 'string' ? { Code: '', Text: note } : note));
}
