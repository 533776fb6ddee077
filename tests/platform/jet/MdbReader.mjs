// SPDX-License-Identifier: GPL-3.0-or-later
// Prints every table of a Jet file as the package mdb-reader has it, one JSON object a table: name, count of the definition, rows as
// lists of text. Numbers are the bits of their double in hex, dates milliseconds since 1970, binary values hex.
// Usage: MdbReader.mjs FILE PASSWORD; MDB_READER may name the folder of the package. Ends with status 9 when it is not installed.
import { execFileSync } from "node:child_process";
import { readFileSync } from "node:fs";

async function load() {
    const folders = [process.env.MDB_READER];
    try {
        folders.push(execFileSync("npm", ["root", "-g"], { encoding: "utf8", stdio: ["ignore", "pipe", "ignore"] }).trim() + "/mdb-reader");
    } catch { /* no npm */ }
    for (const folder of folders.filter(Boolean)) {
        try {
            return (await import(folder + "/lib/node/index.js")).default;
        } catch { /* not there */ }
    }
    process.exit(9);
}

function textOf(value) {
    if (value === null || value === undefined) return "<NULL>";
    if (typeof value === "boolean") return value ? "1" : "0";
    if (typeof value === "number") {
        const view = new DataView(new ArrayBuffer(8));
        view.setFloat64(0, value);
        return view.getBigUint64(0).toString(16);
    }
    if (value instanceof Date) return String(value.getTime());
    if (value instanceof Uint8Array) return Buffer.from(value).toString("hex");
    return String(value);
}

const MDBReader = await load();
const reader = new MDBReader(readFileSync(process.argv[2]), { password: process.argv[3] });
for (const name of reader.getTableNames()) {
    const table = reader.getTable(name);
    const columns = table.getColumnNames();
    const rows = table.getData().map((row) => columns.map((column) => textOf(row[column])));
    console.log(JSON.stringify({ name, count: table.rowCount, columns, rows }));
}
