// Does with JSON.parse and JSON.stringify what an exchange does, on command, one a line, words between tabs; answers each with
// the milliseconds that it took. Lists of files and the parsed documents that are written are made before the clock runs.

import fs from "node:fs"
import path from "node:path"
import readline from "node:readline"
import zlib from "node:zlib"

const lists = new Map()
const documents = new Map()

/** Paths of the files in a folder, relative to it. */
function filesOf(folder) {
    if (!lists.has(folder))
        lists.set(folder, fs.readdirSync(folder, { recursive: true }).filter(name => name.endsWith(".json")))
    return lists.get(folder)
}

const parseFile = file => JSON.parse(fs.readFileSync(file, "utf8"))

function documentsOf(folder) {
    if (!documents.has(folder))
        documents.set(folder, filesOf(folder).map(name => [name, parseFile(path.join(folder, name))]))
    return documents.get(folder)
}

const textOf = document => JSON.stringify(document, null, 2) + "\n"

const commands = {
    /** Nothing: it runs. */
    start() {
        return () => {}
    },

    /** Every file of a folder is read and parsed. */
    parse(folder) {
        const names = filesOf(folder)
        return () => names.map(name => parseFile(path.join(folder, name)))
    },

    /** What was read from a folder is written into another one. */
    stringify(folder, target) {
        const all = documentsOf(folder)
        return () => {
            for (const [name, document] of all) {
                const file = path.join(target, name)
                fs.mkdirSync(path.dirname(file), { recursive: true })
                fs.writeFileSync(file, textOf(document))
            }
        }
    },

    /** The same into one compressed file, without an archive's directory. */
    pack(folder, target) {
        const all = documentsOf(folder)
        return () =>
            fs.writeFileSync(target, Buffer.concat(all.map(([, document]) => zlib.deflateRawSync(textOf(document)))))
    },

    /** Every file of a folder is inflated from memory, after its compressed form was read from a file, and parsed. */
    unpack(folder, target) {
        const sizes = []
        const parts = documentsOf(folder).map(([, document]) => zlib.deflateRawSync(textOf(document)))
        for (const part of parts) sizes.push(part.length)
        fs.writeFileSync(target, Buffer.concat(parts))
        return () => {
            const bytes = fs.readFileSync(target)
            let begin = 0
            return sizes.map(size => {
                begin += size
                return JSON.parse(zlib.inflateRawSync(bytes.subarray(begin - size, begin)).toString("utf8"))
            })
        }
    },
}

const milliseconds = () => Number(process.hrtime.bigint()) / 1e6

for await (const line of readline.createInterface({ input: process.stdin })) {
    const [command, ...folders] = line.split("\t")
    const run = commands[command](...folders)
    globalThis.gc()
    const begin = milliseconds()
    const result = run()
    const time = milliseconds() - begin
    console.log(`${time} ${result?.length ?? 0}`)
}
