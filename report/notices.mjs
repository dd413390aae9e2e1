// The licences of the packages that are bundled into the page, as one text for those who pass it on.
import { readdir, readFile } from 'node:fs/promises';

// The folders below node_modules that the outputs of esbuild took something from.
function packageFolders(metafiles) {
    const files = metafiles.flatMap((metafile) => Object.keys(metafile.inputs));
    const folders = files.map((file) => file.match(/^.*node_modules\/(?:@[^/]+\/)?[^/]+/)?.[0]);
    return [...new Set(folders.filter(Boolean))].sort();
}

async function notice(folder) {
    const { name, version, license, author } = JSON.parse(await readFile(`${folder}/package.json`, 'utf8'));
    const file = (await readdir(folder)).find((entry) => /^(licen[cs]e|copying)/i.test(entry));
    const text = file
        ? (await readFile(`${folder}/${file}`, 'utf8')).replaceAll('\r', '').trim()
        : `Copyright: ${author?.name ?? author}; its package has no licence file.`;
    return `${name} ${version} (${license})\n\n${text}\n`;
}

export async function notices(metafiles) {
    const texts = await Promise.all(packageFolders(metafiles).map(notice));
    return `The page that shows a result contains these packages.\n\n${texts.join('\n----\n\n')}`;
}
