// What the programs made for WebAssembly do, beside the same programs of the desktop: check_browser.mjs BUILD OUT
//
// The demo races that they sail must be the same in every byte, and so must all tables. The report may differ in its
// numbers, by 1 in a million million, as sines are not the same everywhere.

import { execFileSync, spawnSync } from 'node:child_process';
import { cpSync, mkdtempSync, openSync, readFileSync, readdirSync, rmSync, statSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { WASI } from 'node:wasi';

const [build, out] = process.argv.slice(2);
const tolerance = 1e-12;
const races = ['Enoshima_R1.txt', 'enoshima_r2.TXT', 'Valencia_Snipes.txt']; // case plays no part in a name
const moments = [-60, 0, 333.3, 1200, 2500.5].flatMap((t) => ['--at', String(t)]);
const requests = [moments, ...['time', 'distance', 'speed'].map((table) => ['--csv', table])];

function require(holds, complaint) {
    if (holds) return;
    console.error(`check_browser: ${complaint}`);
    process.exit(1);
}

/// Runs a program of `out` with `folder` as its /tree and gives what it printed. It ends well, unless it may fail.
async function run(program, folder, args, mayFail = false) {
    const printed = join(folder, '.printed');
    const wasi = new WASI({
        version: 'preview1',
        args: [program, ...args],
        preopens: { '/tree': folder },
        stdout: openSync(printed, 'w'),
        returnOnExit: true,
    });
    const module = await WebAssembly.compile(readFileSync(join(out, `${program}.wasm`)));
    const status = wasi.start(await WebAssembly.instantiate(module, wasi.getImportObject()));
    require(status === 0 || mayFail, `${program} ${args.join(' ')} ended with ${status}`);
    const text = readFileSync(printed, 'utf8');
    rmSync(printed);
    return text;
}

/// The files below a folder, by their paths in it.
function filesBelow(folder) {
    const names = readdirSync(folder, { recursive: true }).sort();
    return names.filter((name) => statSync(join(folder, name)).isFile());
}

/// All that stands in a JSON value, each with its place: the texts and numbers in the order of the file.
function leaves(value, place = '') {
    if (value === null || typeof value !== 'object') return [[place, value]];
    const members = Object.entries(value);
    return [[place, members.length], ...members.flatMap(([name, member]) => leaves(member, `${place}/${name}`))];
}

/// Compares two reports and says how far their numbers lie apart.
function compareReports(name, ours, theirs) {
    const [a, b] = [leaves(JSON.parse(ours)), leaves(JSON.parse(theirs))];
    require(a.length === b.length, `${name}: ${a.length} values, not ${b.length}`);
    let numbers = 0;
    let differ = 0;
    a.forEach(([place, value], i) => {
        const [place2, value2] = b[i];
        const number = typeof value === 'number' && typeof value2 === 'number';
        const apart = number ? Math.abs(value - value2) / Math.max(Math.abs(value), Math.abs(value2), 1e-300) : 0;
        const same = number ? apart <= tolerance : value === value2;
        require(place === place2 && same, `${name}: ${place} is ${value}, not ${value2} at ${place2}`);
        numbers += number;
        differ += apart > 0;
    });
    require(numbers > 250, `${name}: only ${numbers} numbers`);
    console.log(`${name}: ${numbers} numbers, ${differ} of them not the same in their last places`);
}

const tree = mkdtempSync(join(tmpdir(), 'keelview-browser-'));
process.on('exit', () => rmSync(tree, { recursive: true }));

await run('make_demo', tree, ['/tree']);
const demo = join(build, 'demo');
const sailed = filesBelow(tree);
cpSync('demo', tree, { recursive: true }); // beside those that are sailed, the real one
require(filesBelow(tree).join() === filesBelow(demo).join(), `other files of the demo: ${sailed.join(' ')}`);
for (const file of sailed)
    require(readFileSync(join(tree, file)).equals(readFileSync(join(demo, file))), `${file} of the demo differs`);
console.log(`${sailed.length} files of the demo races are the same`);

cpSync('coastline', join(tree, 'coastline'), { recursive: true });
for (const race of races) {
    for (const request of requests) {
        const ours = await run('report', tree, ['/tree', race, ...request]);
        const theirs = execFileSync(join(build, 'keelview-report'), [tree, race, ...request], { encoding: 'utf8' });
        if (request === moments) compareReports(race, ours, theirs);
        else require(ours === theirs, `${race}: the table of ${request[1]} differs`);
    }
}

// Recordings of devices, whole, damaged and packed: what one machine reads of them, the other does.
const recordings = join(tree, 'recordings');
for (const kind of ['fit', 'vkx', 'track_file'])
    cpSync(join('fuzz/corpus', kind), join(recordings, kind), { recursive: true });
const files = filesBelow(recordings);
const listed = await run('list_recordings', recordings, files.map((file) => `/tree/${file}`), true);
const paths = files.map((file) => join(recordings, file));
const { stdout } = spawnSync(join(build, 'tools/list_recordings'), paths, { encoding: 'utf8' });
require(stdout.length > 1000 && stdout.replaceAll(recordings, '/tree') === listed, 'recordings are not read alike');
console.log(`${files.length} recordings are read alike`);
