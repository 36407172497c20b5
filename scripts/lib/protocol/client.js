// SPDX-License-Identifier: Apache-2.0
// Holds sessions with the language server against the protocol's types: those of the transcripts in
// tests/golden/lsp, played by a client of vscode-jsonrpc's streams. tests/lsp_test.cpp tells what the lines
// of a transcript mean, and compares what is answered; here only its form matters.
//   node client.js TOOL ROOT
'use strict';
const fs = require('fs');
const os = require('os');
const path = require('path');
const { pathToFileURL } = require('url');
const { execFileSync, spawn } = require('child_process');
const { StreamMessageReader, StreamMessageWriter } = require('vscode-jsonrpc/node');
const { faultsBeyondTypes, faultsOfResult } = require('./rules.js');
const { checkSelf } = require('./selfcheck.js');
const { faultsOfCall, faultsOfAnswer, takes } = require('./types.js');

const [tool, root] = process.argv.slice(2);
const golden = path.join(root, 'tests', 'golden');
const noFolder = { processId: null, rootUri: null }; // which the transcripts leave out
const patience = 20000; // ms

const checked = new Map(); // messages by who sends them, and method
const meant = []; // messages of transcripts that are wrong on purpose
const leftOut = []; // messages of transcripts that are no objects, or come after the end
const violations = [];

function count(sender, method) {
  const key = `${sender} ${method}`;
  checked.set(key, (checked.get(key) ?? 0) + 1);
}

function brief(message) {
  const text = JSON.stringify(message);
  return text.length > 300 ? `${text.slice(0, 300)}...` : text;
}

function jsonOf(text) {
  try {
    return JSON.parse(text);
  } catch {
    return undefined;
  }
}

// A server and what is said with it.
class Session {
  constructor(name) {
    this.name = name;
    this.folder = fs.mkdtempSync(path.join(os.tmpdir(), 'protocol-'));
    this.place = {}; // of an "on"
    this.asked = new Map(); // what is not answered yet, by id
    this.due = 0; // messages that the transcript has the server send, and that are still to come
    this.server = spawn(tool, ['lsp'], { cwd: this.folder, stdio: ['pipe', 'pipe', 'inherit'] });
    this.ended = new Promise((resolve) => this.server.on('close', resolve));
    this.ended.then(() => this.leave());
    this.server.stdin.on('error', (error) => this.blame([error.message], null));
    this.writer = new StreamMessageWriter(this.server.stdin);
    const reader = new StreamMessageReader(this.server.stdout);
    reader.onError((error) => this.blame([error.message], null));
    reader.listen((message) => this.take(message));
  }

  blame(faults, message) {
    faults.forEach((fault) => violations.push(`${this.name}: ${fault}\n  ${brief(message)}`));
  }

  // What is wrong on purpose has to be answered rightly all the same.
  send(message, answered) {
    const { id, method, params } = message;
    const isAnswer = method === undefined && 'result' in message;
    const faults = isAnswer ? faultsOfAnswer(message, answered) : faultsOfCall(message, 'client');
    if (faults.length > 0) {
      meant.push(`${this.name}: ${brief(message)}: ${faults[0]}`);
    } else {
      count('client', isAnswer ? `result of ${answered}` : method);
    }
    if (!isAnswer && (typeof id === 'string' || Number.isInteger(id))) {
      this.asked.set(id, [...(this.asked.get(id) ?? []), { ...message, isWrong: faults.length > 0 }]);
    }
    this.hasExited ||= method === 'exit';
    this.client ??= method === 'initialize' ? params.capabilities : undefined;
    return this.writer.write(message);
  }

  take(message) {
    --this.due;
    if ('method' in message) {
      count('server', message.method);
      this.judge(faultsOfCall(message, 'server'), message);
      if ('id' in message) {
        this.send({ jsonrpc: '2.0', id: message.id, result: null }, message.method);
      }
    } else if (message.id === null) {
      count('server', 'refusal of what is no request');
      this.judge(faultsOfAnswer(message, undefined), message);
    } else {
      this.takeAnswer(message);
    }
    this.wake?.();
  }

  takeAnswer(message) {
    const { id, result } = message;
    const [asked, ...later] = this.asked.get(id) ?? [];
    const { method, params, isWrong } = asked ?? {};
    const what = typeof method === 'string' ? method : 'what is no request';
    count('server', `${result === undefined ? 'refusal' : 'result'} of ${what}`);
    const faults = asked ? faultsOfAnswer(message, method) : ['nobody asked'];
    this.judge(faults, message);
    if (faults.length === 0 && result) {
      this.blame(faultsOfResult(method, params, result, this.client), message);
    }
    if (isWrong && result !== undefined && method !== 'textDocument/codeAction') {
      this.blame(['a wrong request is not refused'], message); // or a transcript is not read well
    }
    later.length > 0 ? this.asked.set(id, later) : this.asked.delete(id);
  }

  judge(faults, message) {
    this.blame(faults.length > 0 ? faults : faultsBeyondTypes(message), message);
  }

  async settle() {
    const timer = setTimeout(() => this.giveUp(), patience);
    while (!this.hasExited && (this.due > 0 || this.asked.size > 0)) {
      await new Promise((resolve) => { this.wake = resolve; });
    }
    clearTimeout(timer);
    this.due = 0;
  }

  giveUp() {
    this.blame([`${this.due} messages are missing, and answers to ${JSON.stringify([...this.asked])}`], null);
    this.server.kill();
    this.leave();
  }

  leave() {
    this.hasExited = true;
    this.wake?.();
  }

  run(command) {
    const copied = path.join(this.folder, 'minimal.xml');
    const folders = [path.join(root, 'examples', 'manifests'), path.join(golden, 'check')];
    if (!fs.existsSync(copied)) {
      execFileSync('sh', ['-c', 'cp "$0"/*.xml "$1"/*.xml .', ...folders], { cwd: this.folder });
    }
    execFileSync('sh', ['-c', command], { cwd: this.folder });
  }

  opened(uri, text) {
    return { uri, languageId: 'xml', version: 1, text };
  }

  uriOf(file) {
    return pathToFileURL(path.join(this.folder, file)).href;
  }

  // Short forms leave out what the server needs not; an editor does not.
  messageOf(line) {
    const [, verb, rest] = /^(begin|on|ask|open)(?: (.*))?$/s.exec(line) ?? [];
    if (verb === 'begin') {
      return { id: 0, method: 'initialize', params: { ...noFolder, capabilities: JSON.parse(rest) } };
    }
    if (verb === 'on') {
      const marked = rest.replaceAll('\\n', '\n').replaceAll('\\r', '\r');
      const before = marked.slice(0, marked.indexOf('|')).split(/\r\n|\r|\n/);
      const position = { line: before.length - 1, character: before[before.length - 1].length };
      const textDocument = this.opened(this.uriOf('on.xml'), marked.replace('|', ''));
      this.place = { textDocument: { uri: textDocument.uri }, position, range: { start: position, end: position } };
      return { method: 'textDocument/didOpen', params: { textDocument } };
    }
    if (verb === 'ask') {
      const [, method, more] = /^(\S+)(?: (.*))?$/.exec(rest);
      const taken = Object.entries(this.place).filter(([member]) => takes(method, member));
      const usual = method === 'textDocument/codeAction' ? { context: { diagnostics: [] } } : {};
      return { id: 1, method, params: { ...Object.fromEntries(taken), ...usual, ...JSON.parse(more ?? '{}') } };
    }
    if (verb === 'open') {
      const text = fs.readFileSync(path.join(this.folder, rest), 'utf8');
      return { method: 'textDocument/didOpen', params: { textDocument: this.opened(this.uriOf(rest), text) } };
    }
    const message = jsonOf(line.replaceAll('$FOLDER', pathToFileURL(this.folder).href));
    if (message?.method === 'initialize') {
      message.params = { ...noFolder, ...message.params };
    }
    return message;
  }

  async play(lines) {
    for (const [index, line] of lines.entries()) {
      if (line.startsWith('$ ')) {
        this.run(line.slice(2));
      } else if (line.startsWith('> ')) {
        await this.put(line.slice(2));
        if (!lines[index + 1]?.startsWith('>') || line.startsWith('> ask ')) {
          const answers = lines.slice(index + 1).findIndex((each) => !each.startsWith('{'));
          this.due += this.isBrief ? 0 : answers;
          await this.settle();
        }
      }
    }
  }

  async put(text) {
    const message = this.hasExited ? undefined : this.messageOf(text);
    this.isBrief ||= text.startsWith('begin ');
    if (message?.constructor === Object) {
      this.due += this.isBrief ? 1 : 0; // an answer, or what is found in what was opened
      await this.send({ jsonrpc: '2.0', ...message });
    } else {
      this.due -= this.hasExited ? 0 : 1;
      leftOut.push(`${this.name}: ${text.slice(0, 60)}`);
    }
  }

  async end(expected) {
    if (!this.hasExited) {
      await this.send({ jsonrpc: '2.0', id: 'end', method: 'shutdown' });
      await this.settle();
    }
    if (!this.hasExited) {
      await this.send({ jsonrpc: '2.0', method: 'exit' });
    }
    const timer = setTimeout(() => this.giveUp(), patience);
    const code = await this.ended;
    clearTimeout(timer);
    this.blame(code === expected ? [] : [`the server ended with ${code}`], null);
  }
}

async function main() {
  const refused = checkSelf();
  const folder = path.join(golden, 'lsp');
  const transcripts = fs.readdirSync(folder).filter((name) => name.endsWith('.txt'));
  for (const name of transcripts) {
    const text = fs.readFileSync(path.join(folder, name), 'utf8');
    const session = new Session(name);
    try {
      await session.play(text.split('\n'));
      await session.end(Number(/^\[exit code (\d+)\]$/m.exec(text)?.[1] ?? 0));
    } finally {
      session.server.kill();
      fs.rmSync(session.folder, { recursive: true });
    }
  }
  for (const [key, number] of [...checked].sort()) {
    console.log(`${String(number).padStart(6)} ${key}`);
  }
  meant.forEach((message) => console.log(`wrong on purpose: ${message}`));
  leftOut.forEach((message) => console.log(`left out: ${message}`));
  violations.forEach((violation) => console.error(violation));
  const total = [...checked.values()].reduce((sum, number) => sum + number, 0);
  console.log(`${transcripts.length} sessions, ${total} messages checked, ${violations.length} violations; ` +
    `${meant.length} wrong on purpose, ${leftOut.length} left out, ${refused} of the self check refused`);
  process.exitCode = violations.length > 0 ? 1 : 0;
}

main().catch((error) => {
  console.error(error);
  process.exit(1);
});
