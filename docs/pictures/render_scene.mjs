// Serves a page, three.js and the scene to a headless Chromium on this machine, which sends the picture back.
import { spawn } from 'node:child_process';
import { mkdtemp, readFile, rm, writeFile } from 'node:fs/promises';
import { createServer } from 'node:http';
import { tmpdir } from 'node:os';
import { basename, dirname, extname, join, normalize } from 'node:path';
import { fileURLToPath } from 'node:url';

const [three, scene, png, from = '-1,-2,1.2', node = ''] = process.argv.slice(2);
const here = dirname(fileURLToPath(import.meta.url));
const types = { '.html': 'text/html', '.js': 'text/javascript' };
const patience = 120_000;

function fileOf(path) {
    if (path === '/') {
        return join(here, 'scene.html');
    }
    const [, room, ...rest] = normalize(path).split('/');
    return join(room === 'three' ? three : dirname(scene), ...rest);
}

async function answer(request, response, done) {
    const { pathname } = new URL(request.url, 'http://localhost');
    if (request.method === 'POST') {
        const parts = [];
        for await (const part of request) {
            parts.push(part);
        }
        response.end();
        done(pathname === '/picture' ? Buffer.concat(parts) : new Error(Buffer.concat(parts).toString()));
        return;
    }
    try {
        const file = fileOf(decodeURIComponent(pathname));
        const body = await readFile(file);
        response.setHeader('Content-Type', types[extname(file)] ?? 'application/octet-stream');
        response.end(body);
    } catch {
        response.statusCode = 404;
        response.end();
    }
}

const result = new Promise((done) => {
    const server = createServer((request, response) => answer(request, response, done));
    server.listen(0, '127.0.0.1', async () => {
        const profile = await mkdtemp(join(tmpdir(), 'scene-picture-'));
        const query = new URLSearchParams({ scene: `/scene/${basename(scene)}`, from, node });
        const browser = spawn(process.env.CHROMIUM ?? 'chromium', [
            '--headless', '--no-sandbox', '--disable-quic', '--no-first-run', '--disable-background-networking',
            '--disable-component-update', '--disable-sync', '--use-angle=swiftshader', '--enable-unsafe-swiftshader',
            `--user-data-dir=${profile}`, `http://127.0.0.1:${server.address().port}/?${query}`,
        ], { stdio: 'ignore' });
        const timer = setTimeout(() => done(new Error('no picture came')), patience);
        browser.on('error', done);
        finish = async () => {
            clearTimeout(timer);
            server.close();
            server.closeAllConnections();
            const gone = new Promise((resolve) => browser.on('close', resolve));
            browser.kill();
            await gone;
            await rm(profile, { recursive: true, force: true });
        };
    });
});

let finish = async () => {};
const picture = await result;
await finish();
if (picture instanceof Error) {
    console.error(picture.message);
    process.exit(1);
}
await writeFile(png, picture);
