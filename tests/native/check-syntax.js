// Parses one generated source file with a tree-sitter grammar and reports every
// syntax error with its line. Usage: node check-syntax.js swift|kotlin FILE
// Exit status: 0 clean, 1 syntax errors, 2 bad usage.
'use strict';

const fs = require('fs');
const Parser = require('tree-sitter');

const grammars = {
  swift: () => require('tree-sitter-swift'),
  kotlin: () => require('tree-sitter-kotlin'),
};

const [language, file] = process.argv.slice(2);
if (!grammars[language] || !file) {
  console.error('usage: node check-syntax.js swift|kotlin FILE');
  process.exit(2);
}

const text = fs.readFileSync(file, 'utf8');
const parser = new Parser();
parser.setLanguage(grammars[language]());
const tree = parser.parse(text);
const lines = text.split('\n');

// The Kotlin grammar marks the statement end before a closing brace as a missing
// automatic semicolon; the language itself needs none there.
const harmless = (node) => node.isMissing && node.type === '_automatic_semicolon';

const problems = [];
const visit = (node) => {
  if ((node.type === 'ERROR' || node.isMissing) && !harmless(node)) {
    const row = node.startPosition.row;
    problems.push(`${file}:${row + 1}: ${node.isMissing ? 'missing ' + node.type : 'syntax error'}: ${lines[row]}`);
  }
  for (const child of node.children) {
    visit(child);
  }
};
visit(tree.rootNode);

for (const problem of problems) {
  console.log(problem);
}
process.exit(problems.length === 0 ? 0 : 1);
