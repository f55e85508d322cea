// Reads T-SQL scripts with a grammar that is not our own: what the embedded database understands proves nothing about
// SQL Server. The rules behind it are for what that grammar lets pass, and for what a server of 2008 does not know yet.
//
//   node check.js FILE...        complaints with file and line; exit code 1 if there are any
//   node check.js --seeded FILE  puts mistakes into the script one by one and demands a complaint for each
//   node check.js --trace FILE   reads what a traced run of the program sent: what ran has to be T-SQL
'use strict';

const fs = require('fs');
const { CharStreams, CommonTokenStream } = require('antlr4ts');
const { TerminalNode } = require('antlr4ts/tree');
const { TSQLGrammar: { TSqlParser }, TSqlLexer } = require('antlr4ts-sql');

const TYPES = new Set(['BIT', 'TINYINT', 'SMALLINT', 'INT', 'BIGINT', 'DECIMAL', 'NUMERIC', 'MONEY', 'SMALLMONEY', 'FLOAT', 'REAL',
  'CHAR', 'VARCHAR', 'NCHAR', 'NVARCHAR', 'DATE', 'DATETIME', 'SMALLDATETIME', 'DATETIME2', 'TIME', 'UNIQUEIDENTIFIER',
  'BINARY', 'VARBINARY']);

// Behind a parenthesis: functions that came after 2008.
const LATER_FUNCTIONS = new Set(['IIF', 'CHOOSE', 'CONCAT', 'CONCAT_WS', 'FORMAT', 'EOMONTH', 'DATEFROMPARTS', 'DATETIMEFROMPARTS',
  'TRY_CAST', 'TRY_CONVERT', 'TRY_PARSE', 'PARSE', 'LAG', 'LEAD', 'FIRST_VALUE', 'LAST_VALUE', 'STRING_AGG', 'STRING_SPLIT',
  'STRING_ESCAPE', 'TRANSLATE', 'TRIM', 'JSON_VALUE', 'JSON_QUERY', 'ISJSON', 'OPENJSON', 'GREATEST', 'LEAST', 'GENERATE_SERIES',
  'DATETRUNC', 'DATEDIFF_BIG', 'COMPRESS', 'DECOMPRESS']);

// Words in a row, no matter where.
const LATER_WORDS = [['THROW'], ['IF', 'EXISTS', null], ['CREATE', 'OR'], ['OFFSET'], ['FETCH', 'NEXT'], ['ROWS', 'BETWEEN'],
  ['CREATE', 'SEQUENCE'], ['NEXT', 'VALUE'], ['WITHIN', 'GROUP'], ['IS', 'DISTINCT'], ['IS', 'NOT', 'DISTINCT']];

/** The batches of a script with the line at which each begins. */
function batchesOf(script) {
  const batches = [];
  let lines = [];
  let first = 1;
  script.split(/\r?\n/).concat('GO').forEach((line, index) => {
    if (!/^\s*GO\s*;?\s*$/i.test(line)) return lines.push(line);
    if (lines.join('').trim() !== '') batches.push({ text: lines.join('\n'), first });
    lines = [];
    first = index + 2;
  });
  return batches;
}

class Complaints {
  constructor(batch) {
    this.first = batch.first;
    this.list = [];
  }
  add(line, message) {
    this.list.push({ line: this.first + line - 1, message });
  }
  // The name by which the lexer and the parser call their listener.
  syntaxError(recognizer, symbol, line, column, message) {
    this.add(line, message.replace(/ expecting \{.*/s, ''));  // hundreds of words
  }
}

function walk(node, visit) {
  visit(node);
  for (let i = 0; i < node.childCount; ++i) walk(node.getChild(i), visit);
}

/** The columns of a table without a comma between them, which the grammar takes for optional; indexes among them. */
function checkTables(tree, complaints) {
  walk(tree, (node) => {
    if (node instanceof TerminalNode || TSqlParser.ruleNames[node.ruleIndex] !== 'column_def_table_constraints') return;
    let parts = 0;
    let commas = 0;
    for (let i = 0; i < node.childCount; ++i) {
      if (node.getChild(i).text === ',') ++commas;
      else ++parts;
    }
    if (commas !== parts - 1) complaints.add(node.start.line, 'a comma is missing between two columns');
  });
}

/** The grammar takes any word behind ROLLBACK for the name of a transaction. */
function checkTransactions(tree, complaints) {
  walk(tree, (node) => {
    if (node instanceof TerminalNode || TSqlParser.ruleNames[node.ruleIndex] !== 'transaction_statement') return;
    const word = node.childCount > 1 ? node.getChild(1).text : 'TRAN';
    if (!/^(TRAN|TRANSACTION|WORK|DISTRIBUTED)$/.test(word)) complaints.add(node.start.line, `TRAN is missing ahead of ${word}`);
  });
}

/** A name alone would call a procedure, which the server takes at the beginning of a batch only: a misspelt word. */
function checkCalls(tree, complaints) {
  walk(tree, (node) => {
    if (node instanceof TerminalNode || TSqlParser.ruleNames[node.ruleIndex] !== 'execute_body_batch') return;
    complaints.add(node.start.line, `${node.start.text} begins no statement`);
  });
}

/** The types of columns, variables and conversions. */
function checkTypes(tree, complaints) {
  walk(tree, (node) => {
    if (node instanceof TerminalNode || TSqlParser.ruleNames[node.ruleIndex] !== 'data_type') return;
    const name = node.start.text.replace(/[[\]]/g, '');
    if (!TYPES.has(name)) complaints.add(node.start.line, `no type of a server of 2008, or none for this system: ${name}`);
  });
}

function checkWords(tokens, complaints) {
  const texts = tokens.map((token) => token.text);
  tokens.forEach((token, i) => {
    if (texts[i + 1] === '(' && LATER_FUNCTIONS.has(texts[i])) complaints.add(token.line, `${texts[i]} came after 2008`);
    if (texts[i] === '||' || (texts[i] === '|' && texts[i + 1] === '|')) complaints.add(token.line, '|| joins no texts here');
    if (texts[i] === 'INDEX' && ![['CREATE'], ['DROP'], ['UNIQUE'], ['CLUSTERED'], ['NONCLUSTERED']].flat().includes(texts[i - 1])) {
      complaints.add(token.line, 'an index within CREATE TABLE came after 2008');
    }
    for (const words of LATER_WORDS) {
      const found = words.every((word, k) => word === null || texts[i + k] === word);
      const drops = words[0] !== 'IF' || ['TABLE', 'PROCEDURE', 'INDEX', 'PROC', 'VIEW'].includes(texts[i - 1]);
      if (found && drops) complaints.add(token.line, `${words.filter(Boolean).join(' ')} came after 2008`);
    }
  });
}

/** A variable has to be declared ahead of its use, in its batch: as a parameter or behind DECLARE. */
function checkVariables(tokens, complaints) {
  const known = new Set();
  let declaring = tokens[0]?.text === 'CREATE';
  let depth = 0;
  tokens.forEach((token, i) => {
    const text = token.text;
    if (text === '(') ++depth;
    if (text === ')') --depth;
    if (text === 'DECLARE') declaring = true;
    else if (declaring && depth === 0 && /^(AS|SET|SELECT|IF|WHILE|BEGIN|INSERT|UPDATE|DELETE|CREATE|EXEC|RETURN)$/.test(text) && i > 0) declaring = false;
    if (!text.startsWith('@') || text.startsWith('@@')) return;
    const before = tokens[i - 1]?.text;
    if (declaring && depth === 0 && (before === 'DECLARE' || before === ',' || i === 3)) known.add(text);
    // What follows EXEC names the parameters of another procedure.
    else if (!known.has(text) && tokens[i + 1]?.text !== '=') complaints.add(token.line, `${text} is not declared`);
    else if (!known.has(text) && before === 'SET') complaints.add(token.line, `${text} is not declared`);
  });
}

function checkPlace(tokens, complaints) {
  tokens.forEach((token, i) => {
    const makes = token.text === 'CREATE' && /^PROC(EDURE)?$/.test(tokens[i + 1]?.text);
    if (makes && i > 0) complaints.add(token.line, 'CREATE PROCEDURE has to be the first of its batch: a GO is missing');
  });
}

function check(script) {
  const found = [];
  for (const batch of batchesOf(script)) {
    const complaints = new Complaints(batch);
    const lexer = new TSqlLexer(CharStreams.fromString(batch.text.toUpperCase()));
    lexer.removeErrorListeners();
    lexer.addErrorListener(complaints);
    const stream = new CommonTokenStream(lexer);
    const parser = new TSqlParser(stream);
    parser.removeErrorListeners();
    parser.addErrorListener(complaints);
    const tree = parser.tsql_file();
    const tokens = stream.getTokens().filter((token) => token.channel === 0 && token.type !== -1);
    checkTables(tree, complaints);
    checkCalls(tree, complaints);
    checkTransactions(tree, complaints);
    checkTypes(tree, complaints);
    checkWords(tokens, complaints);
    checkVariables(tokens, complaints);
    checkPlace(tokens, complaints);
    found.push(...complaints.list);
  }
  return found;
}

/** Mistakes, each a text of a script and what takes its place. The first that fits the script is put in. */
const MISTAKES = [
  ['SELECT * FROM', 'SELECT * FORM'],
  ['WHERE (PYDM LIKE @NR OR', 'WHERE (PYDM LIKE @NR OR)'],
  ['AND ISNULL(SFTY, 0) = 0', 'AND ISNULL(SFTY, 0 = 0'],
  ['ORDER BY LEN(YPBM), YPBM', 'ORDER BY LEN(YPBM), YPBM LIMIT 5'],
  ['ORDER BY LEN(YPBM), YPBM', 'ORDER BY LEN(YPBM) OFFSET 5 ROWS FETCH NEXT 5 ROWS ONLY'],
  ['ELSE IF @ZD = \'WBDM\'', 'ELSEIF @ZD = \'WBDM\''],
  ['@LB varchar(10)', '@LB varchar(10'],
  ['@KFMC varchar(50)', '@KFMC text(50)'],
  ['SET NOCOUNT ON', 'SET NOCOUNT'],
  ['SET @XX = ', 'SET @YY = '],
  ['IF @@ROWCOUNT = 0', 'IF @@ROWCOUNT == 0'],
  ['ROLLBACK TRAN\n', 'THROW 50000, \'x\', 1\n'],
  ['ROLLBACK TRAN', 'ROLLBACK TRANSACT'],
  ['COMMIT TRAN\nEND', 'COMMIT TRAN'],
  ['\'出库单【\' + @SLDH', '\'出库单【\' || @SLDH'],
  ['\'出库单【\' + @SLDH', 'CONCAT(\'出库单【\', @SLDH)'],
  ['\'出库单【\' + @SLDH', '\'出库单【 + @SLDH'],
  ['RAISERROR(\'%s\', 16, 1, @XX)', 'RAISERROR \'%s\', 16, 1, @XX'],
  ['CASE WHEN C.CLB > 1 THEN C.CLB ELSE 1 END', 'IIF(C.CLB > 1, C.CLB, 1)'],
  ['CASE WHEN C.CLB > 1 THEN C.CLB ELSE 1 END', 'CASE WHEN C.CLB > 1 C.CLB ELSE 1 END'],
  ['IF OBJECT_ID(\'YK_GetPH\') IS NOT NULL DROP PROCEDURE YK_GetPH', 'DROP PROCEDURE IF EXISTS YK_GetPH'],
  ['GO\n-- The drug\'s batches', '-- The drug\'s batches'],
  ['INSERT INTO #WP (YPBM)\n', 'INSERT INTO #WP YPBM)\n'],
  ['DELETE FROM YK_CurryPH WHERE', 'DELETE FROM YK_CurryPH WHEN'],
  ['group_name varchar(50) NOT NULL DEFAULT \'\',', 'group_name varchar(50) NOT NULL DEFAULT \'\''],
  ['username   varchar(50) NOT NULL,', 'username   string NOT NULL,'],
  ['username   varchar(50) NOT NULL,', 'username   varchar(50) NOT NUL,'],
  ['IDENTITY(1,1)', 'AUTO_INCREMENT'],
  ['IDENTITY(1,1)', 'IDENTITY(1,)'],
  ['SearchType varchar(20) NOT NULL DEFAULT \'\'', 'SearchType varchar(20) NOT NULL DEFAULT \'\', INDEX IX_x (username)'],
  ['CREATE INDEX IX_userdb_username ON userdb (username)', 'CREATE INDEX IF NOT EXISTS IX_userdb_username ON userdb (username)'],
  ['IF OBJECT_ID(\'userdb\') IS NULL\nBEGIN', 'IF OBJECT_ID(\'userdb\') IS NULL THEN'],
];

function checkFiles(files) {
  let complaints = 0;
  for (const file of files) {
    for (const { line, message } of check(fs.readFileSync(file, 'utf8'))) {
      console.error(`${file}:${line}: ${message}`);
      ++complaints;
    }
  }
  return complaints === 0;
}

/** Each mistake has to fit one of the scripts and to bring a complaint about a batch that it changes. */
function checkSeeded(files) {
  const scripts = files.map((file) => fs.readFileSync(file, 'utf8').replace(/\r\n/g, '\n'));
  let missed = 0;
  for (const [from, to] of MISTAKES) {
    const script = scripts.find((text) => text.includes(from)) ?? '';
    const good = new Set(batchesOf(script).map((batch) => batch.text));
    const changed = batchesOf(script.replace(from, () => to)).filter((batch) => !good.has(batch.text));
    if (changed.some((batch) => check(batch.text).length > 0)) continue;
    console.error(`seeded mistake ${script === '' ? 'fits no script' : 'passes'}: ${JSON.stringify(from)} -> ${JSON.stringify(to)}`);
    ++missed;
  }
  console.log(`${MISTAKES.length - missed} of ${MISTAKES.length} seeded mistakes are found`);
  return missed === 0;
}

/** The statements of a trace that did not fail, one of each kind: what differs in literals alone is the same kind. */
function ranStatements(trace) {
  const kinds = new Map();
  for (const entry of trace.split(/^\d+ us\t-?\d+ rows\t/m).slice(1)) {
    const [statement, failure] = entry.replace(/\n$/, '').split('\t');
    if (failure === undefined) kinds.set(statement.replace(/'[^']*'|\d+(\.\d+)?/g, '#'), statement);
  }
  return [...kinds.values()];
}

function checkTraces(files) {
  let complaints = 0;
  let checked = 0;
  for (const file of files) {
    for (const statement of ranStatements(fs.readFileSync(file, 'utf8'))) {
      ++checked;
      for (const { message } of check(statement)) {
        console.error(`sent and run, but no T-SQL: ${message}: ${statement}`);
        ++complaints;
      }
    }
  }
  console.log(`${checked} kinds of statements that were sent are read`);
  return complaints === 0 && checked > 0;
}

const WAYS = { '--seeded': checkSeeded, '--trace': checkTraces };
const way = WAYS[process.argv[2]];
const files = process.argv.slice(way ? 3 : 2);
if (files.length === 0) {
  console.error('usage: node check.js [--seeded|--trace] FILE...');
  process.exit(2);
}
process.exit((way ?? checkFiles)(files) ? 0 : 1);
