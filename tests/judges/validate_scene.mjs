// Judges scenes by the glTF validator: node validate_scene.mjs GLB... Status 0 when it has neither an error nor a
// warning to say of any of them, 1 otherwise.
import { readFile, stat } from 'node:fs/promises';
import { createRequire } from 'node:module';
import { dirname, join } from 'node:path';

// The packages stand in the folder that the script was started in.
const require = createRequire(join(process.cwd(), 'package.json'));
const validator = require('gltf-validator');
const shown = 20;

async function judge(path) {
    if ((await stat(path)).size === 0) {
        throw new Error('the file is empty');
    }
    const report = await validator.validateBytes(new Uint8Array(await readFile(path)), {
        uri: path,
        format: 'glb',
        maxIssues: 0,
        externalResourceFunction: async (uri) => new Uint8Array(await readFile(join(dirname(path), decodeURIComponent(uri)))),
    });
    const { numErrors, numWarnings, numInfos, messages } = report.issues;
    const grave = messages.filter((message) => message.severity < 2);
    for (const message of grave.slice(0, shown)) {
        console.error(`${path}: ${message.pointer ?? `byte ${message.offset}`}: ${message.code}: ${message.message}`);
    }
    const { info } = report;
    console.log(`${path}: ${numErrors} errors, ${numWarnings} warnings, ${numInfos} notes; ` +
        `${info.drawCallCount} draw calls, ${info.totalVertexCount} vertices, ${info.totalTriangleCount} triangles`);
    return numErrors === 0 && numWarnings === 0;
}

let good = process.argv.length > 2;
for (const path of process.argv.slice(2)) {
    try {
        good = (await judge(path)) && good;
    } catch (error) {
        console.error(`${path}: ${error.message ?? error}`);
        good = false;
    }
}
process.exit(good ? 0 : 1);
