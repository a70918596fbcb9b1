// Counts the values of a column over the distinct lines that hold a text, as columns_count.awk does, in a UTF-8 file:
// node columns_duckdb.mjs FOLDER FILE NEEDLE COLUMN, where FOLDER is the one that npm installed DuckDB into.
import { createRequire } from "node:module";

const [folder, file, needle, column] = process.argv.slice(2);
const { DuckDBInstance } = createRequire(`${folder}/`)("@duckdb/node-api");
const connection = await (await DuckDBInstance.create(":memory:")).connect();
const quoted = (text) => `'${text.replaceAll("'", "''")}'`;
const counted = await connection.runAndReadAll(`
    select value, count(*) from (
        select distinct line, split_part(line, chr(9), ${Number(column)}) as value
        from read_csv(${quoted(file)}, delim = chr(1), header = false, quote = '', escape = '', auto_detect = false,
                      strict_mode = false, columns = {line: 'VARCHAR'})
        where contains(line, ${quoted(needle)}))
    where value <> '' group by value`);
process.stdout.write(counted.getRows().map(([value, count]) => `${value}\t${count}\n`).join(""));
