// SPDX-License-Identifier: Apache-2.0
// What the protocol asks for in words, beyond its types.
'use strict';

const order = (a, b) => a.line - b.line || a.character - b.character;
const isBefore = (a, b) => order(a, b) < 0;
const holds = (outer, inner) => !isBefore(inner.start, outer.start) && !isBefore(outer.end, inner.end);
const compare = (a, b) => order(a.start, b.start) || order(a.end, b.end);
const at = (position) => ({ start: position, end: position });
const firstKinds = Array.from({ length: 18 }, (_, i) => i + 1); // which every editor knows, of items and of symbols

// All objects in a value, itself among them.
function objectsIn(value) {
  if (value === null || typeof value !== 'object') {
    return [];
  }
  return [value, ...Object.values(value).flatMap(objectsIn)];
}

function faultsAnywhere(value) {
  const faults = [];
  for (const each of objectsIn(value)) {
    if (each.start && each.end && isBefore(each.end, each.start)) {
      faults.push(`a range ends before it begins: ${JSON.stringify(each)}`);
    }
    if (Array.isArray(each) && each.every((edit) => edit?.range && 'newText' in edit)) {
      const ranges = each.map((edit) => edit.range).sort(compare);
      const isApart = ranges.every((range, i) => i === 0 || !isBefore(range.start, ranges[i - 1].end));
      faults.push(...(isApart ? [] : [`edits overlap: ${JSON.stringify(ranges)}`]));
    }
  }
  return faults;
}

function faultsOfSymbol({ name, kind, range, selectionRange, children }, ability) {
  const known = ability?.symbolKind?.valueSet ?? firstKinds;
  return [
    ...(name.trim() === '' ? ['a symbol has no name'] : []),
    ...(known.includes(kind) ? [] : [`the editor knows no symbol ${kind} of "${name}"`]),
    ...(selectionRange && !holds(range, selectionRange) ? [`the name of "${name}" lies beside it`] : []),
    ...(children ?? []).flatMap((child) => faultsOfSymbol(child, ability)),
  ];
}

const rules = {
  initialize: (params, { capabilities: { positionEncoding, codeActionProvider, renameProvider } }, client) => {
    const encodings = client.general?.positionEncodings ?? ['utf-16'];
    const { codeAction, rename } = client.textDocument ?? {};
    const optionsFault = (what, provider, ability) =>
      typeof provider === 'object' && !ability ? [`the editor takes no options of ${what}`] : [];
    return [
      ...(encodings.includes(positionEncoding ?? 'utf-16') ? [] : [`the editor does not count in ${positionEncoding}`]),
      ...optionsFault('code actions', codeActionProvider, codeAction?.codeActionLiteralSupport),
      ...optionsFault('renaming', renameProvider, rename?.prepareSupport),
    ];
  },
  'textDocument/completion': ({ position }, { items }, client) => {
    const { completionItemKind, completionItem } = client.textDocument?.completion ?? {};
    const known = completionItemKind?.valueSet ?? firstKinds;
    return items.flatMap(({ label, kind, insertTextFormat, textEdit: { range } }) => [
      ...(range.start.line === range.end.line ? [] : [`what "${label}" replaces is in several lines`]),
      ...(holds(range, at(position)) ? [] : [`what "${label}" replaces is elsewhere`]),
      ...(known.includes(kind) ? [] : [`the editor knows no item ${kind} of "${label}"`]),
      ...(insertTextFormat === 2 && !completionItem?.snippetSupport ? [`"${label}" is a snippet`] : []),
    ]);
  },
  'textDocument/codeAction': ({ context }, actions, client) => {
    const literals = client.textDocument?.codeAction?.codeActionLiteralSupport;
    const versioned = client.workspace?.workspaceEdit?.documentChanges;
    const isAsked = ({ kind }) => !context.only || context.only.some((one) => `${kind}.`.startsWith(`${one}.`));
    return actions.flatMap((action) => [
      ...(literals || typeof action.command === 'string' ? [] : [`the editor takes commands only: "${action.title}"`]),
      ...(action.edit?.documentChanges && !versioned ? ['the editor takes no documentChanges'] : []),
      ...(isAsked(action) ? [] : [`nobody asked for ${action.kind}`]),
    ]);
  },
  'textDocument/documentSymbol': (params, symbols, client) =>
    symbols.flatMap((each) => faultsOfSymbol(each, client.textDocument?.documentSymbol)),
  'workspace/symbol': (params, symbols, client) =>
    symbols.flatMap((each) => faultsOfSymbol(each, client.workspace?.symbol)),
  'textDocument/foldingRange': (params, ranges) =>
    ranges.filter((each) => each.startLine > each.endLine).map((each) => `no fold: ${JSON.stringify(each)}`),
  'textDocument/hover': (params, { contents }, client) => {
    const formats = client.textDocument?.hover?.contentFormat ?? ['plaintext'];
    return formats.includes(contents.kind) ? [] : [`the editor takes no ${contents.kind}`];
  },
  'textDocument/prepareRename': ({ position }, { range }) =>
    holds(range, at(position)) ? [] : ['what is renamed is elsewhere'],
};

// Of a message whose types are right: params, or a result.
function faultsBeyondTypes(message) {
  return faultsAnywhere(message.params ?? message.result);
}

// Of a result of right types that is not null; `client` are the editor's capabilities.
function faultsOfResult(method, params, result, client) {
  return rules[method]?.(params, result, client) ?? [];
}

module.exports = { faultsBeyondTypes, faultsOfResult };
