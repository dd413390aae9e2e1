const OPENING = /^<script type="text\/plain" data-block="([^"]+)">/;
const LONGEST_OPENING = 200; // bytes
const LESS = '<'.charCodeAt(0);

/** A report taken apart, so that the page need not parse its data, which can be tens of megabytes, in one go. */
export interface ReportParts {
    /** The report without the texts of its parts. */
    page: string;
    /** Where in the file the text of each part begins and ends. */
    places: Map<string, [begin: number, end: number]>;
}

/** Takes apart the file of a report. */
export function partsOf(report: Uint8Array): ReportParts {
    const decoder = new TextDecoder();
    const places: ReportParts['places'] = new Map();
    let page = '';
    let from = 0;
    for (let at = report.indexOf(LESS); at >= 0; at = report.indexOf(LESS, at + 1)) {
        const opening = OPENING.exec(decoder.decode(report.subarray(at, at + LONGEST_OPENING)));
        if (!opening) continue;
        const begin = at + opening[0].length;
        const end = report.indexOf(LESS, begin); // there is none in base64
        places.set(opening[1], [begin, end]);
        page += decoder.decode(report.subarray(from, begin));
        from = end;
        at = end;
    }
    return { page: page + decoder.decode(report.subarray(from)), places };
}
