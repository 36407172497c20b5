// SPDX-License-Identifier: Apache-2.0
// That what is wrong is refused, or else the client's silence tells nothing.
'use strict';
const { faultsBeyondTypes, faultsOfResult } = require('./rules.js');
const { faultsOfCall, faultsOfAnswer } = require('./types.js');

// Gives how many wrong messages are refused; throws if one is not, or a right one is.
function checkSelf() {
  const call = (method, params) => faultsOfCall({ jsonrpc: '2.0', method, params }, 'server');
  const result = (method, value) => faultsOfAnswer({ jsonrpc: '2.0', id: 1, result: value }, method);
  const range = { start: { line: 0, character: 0 }, end: { line: 0, character: 1 } };
  const publish = (diagnostics) => call('textDocument/publishDiagnostics', { uri: 'file:///a', diagnostics });
  const found = (more) => publish([{ range, message: 'm', ...more }]);
  const symbol = { name: 'a', kind: 1, range, selectionRange: range };
  const place = { name: 'a', kind: 1, location: { uri: 'file:///a', range } };
  const beyond = (value) => faultsBeyondTypes({ result: value });
  const action = { title: 'a', kind: 'quickfix', edit: {} };
  const bound = (method, params, value) => faultsOfResult(method, params, value, {});
  const completion = (one) => bound('textDocument/completion', { position: range.end }, { items: [one] });
  const outline = (more) => bound('textDocument/documentSymbol', {}, [{ ...symbol, ...more }]);
  const item = { label: 'a', kind: 1, textEdit: { range, newText: '' } };
  const before = { start: range.start, end: range.start };
  const after = { start: range.end, end: { line: 1, character: 0 } };
  const wrong = {
    'no message of JSON-RPC': faultsOfCall({ method: 'initialized', params: {} }, 'client'),
    'an unknown method': call('textDocument/fly', {}),
    'a request without an id': call('client/registerCapability', { registrations: [] }),
    'a message of the other side': call('initialized', {}),
    'an unknown member': found({ colour: 1 }),
    'a missing member': publish([{ range }]),
    'a value that is none of its enumeration': found({ severity: 5 }),
    'a negative line': found({ range: { ...range, start: { line: -1, character: 0 } } }),
    'no whole number': found({ code: 1.5 }),
    'no URI': found({ codeDescription: { href: 'rules.md' } }),
    'null for a list': publish(null),
    'no result': faultsOfAnswer({ jsonrpc: '2.0', id: 1 }, 'shutdown'),
    'a result of another method': result('textDocument/hover', [{ range, newText: '' }]),
    'a list of two kinds': result('textDocument/documentSymbol', [symbol, place]),
    'an error without a code': faultsOfAnswer({ jsonrpc: '2.0', id: 1, error: { message: 'm' } }, 'shutdown'),
    'a range that ends before it begins': beyond([{ start: range.end, end: range.start }]),
    'edits that overlap': beyond([{ range, newText: 'a' }, { range, newText: 'b' }]),
    'an item for another place': completion({ ...item, textEdit: { range: before, newText: '' } }),
    'an item over two lines': completion({ ...item, textEdit: { range: after, newText: '' } }),
    'an item of an unknown kind': completion({ ...item, kind: 19 }),
    'a snippet': completion({ ...item, insertTextFormat: 2 }),
    'an encoding that nobody asked for': bound('initialize', {}, { capabilities: { positionEncoding: 'utf-8' } }),
    'an action': bound('textDocument/codeAction', { context: {} }, [action]),
    'a symbol without a name': outline({ name: ' ' }),
    'a symbol whose name lies beside it': outline({ selectionRange: after }),
  };
  const right = [
    beyond([{ range: after, newText: 'b' }, { range, newText: 'a' }, { range: before, newText: '' }]),
    completion(item),
    outline({}),
    found({ severity: 1, code: 'a', tags: [1], data: [1.5, { a: null }] }),
    result('textDocument/documentSymbol', [symbol]),
    result('textDocument/hover', null),
    result('shutdown', null),
  ].flat();
  const taken = Object.keys(wrong).filter((name) => wrong[name].length === 0);
  if (taken.length > 0 || right.length > 0) {
    throw new Error(`it takes ${taken.join(', ') || 'nothing'}, and refuses ${right.join(', ') || 'nothing'}`);
  }
  return Object.keys(wrong).length;
}

module.exports = { checkSelf };
