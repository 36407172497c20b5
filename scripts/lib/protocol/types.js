// SPDX-License-Identifier: Apache-2.0
// Holds values against the types that vscode-languageserver-protocol declares.
'use strict';
const path = require('path');
const ts = require('typescript');
const protocol = require('vscode-languageserver-protocol');

const entry = path.join(__dirname, 'messages.d.ts');
const program = ts.createProgram([entry], {
  strict: true,
  noEmit: true,
  types: [],
  target: ts.ScriptTarget.ES2020,
  moduleResolution: ts.ModuleResolutionKind.Node10,
  baseUrl: path.join(path.dirname(require.resolve('vscode-languageserver-protocol/package.json')), '..'),
  paths: { 'vscode-languageserver-protocol': ['vscode-languageserver-protocol/lib/common/api'] },
});
const checker = program.getTypeChecker();
const source = program.getSourceFile(entry);
const mistakes = program.getSemanticDiagnostics(source);
if (mistakes.length > 0) {
  throw new Error(ts.flattenDiagnosticMessageText(mistakes[0].messageText, '\n'));
}
const exported = checker
  .getExportsOfModule(checker.getSymbolAtLocation(source))
  .map((symbol) => (symbol.flags & ts.SymbolFlags.Alias ? checker.getAliasedSymbol(symbol) : symbol));

function typeNamed(name) {
  return checker.getDeclaredTypeOfSymbol(exported.find((symbol) => symbol.name === name));
}

// Of each method what it is and its types, from namespaces such as
//   HoverRequest { const method: 'textDocument/hover'; const type: ProtocolRequestType<Params, Result, ...>; }
const methods = new Map();
for (const symbol of exported.filter((each) => each.flags & ts.SymbolFlags.ValueModule)) {
  const members = checker.getExportsOfModule(symbol);
  const typeOf = (name) => {
    const member = members.find((each) => each.name === name);
    return member && checker.getTypeOfSymbol(member);
  };
  const method = typeOf('method');
  const type = typeOf('type');
  if (method?.isStringLiteral() && type) {
    const kind = type.symbol.name; // as ProtocolRequestType, or ProtocolRequestType0 without params
    const args = [...checker.getTypeArguments(type)];
    const params = kind.endsWith('0') ? undefined : args.shift();
    const isRequest = kind.includes('Request');
    const [result, , error] = isRequest ? args : [];
    const registration = args[isRequest ? 3 : 0];
    const direction = protocol[symbol.name]?.messageDirection ?? 'both';
    methods.set(method.value, { isRequest, params, result, error, registration, direction });
  }
}

// TypeScript takes these for plain numbers and texts, so the names that a member is declared with tell.
function numberFault(value, names) {
  const least = /\buinteger\b/.test(names) ? 0 : /\binteger\b/.test(names) ? -(2 ** 31) : undefined;
  const isWithin = least === undefined || (Number.isInteger(value) && value >= least && value < 2 ** 31);
  return isWithin ? [] : [`${value} is no ${least === 0 ? 'uinteger' : 'integer'}`];
}

function textFault(value, names) {
  return /^(DocumentUri|URI)\b/.test(names) && !URL.canParse(value) ? [`"${value}" is no URI`] : [];
}

// What is wrong with a value, each with its place; `names` are those that the type is declared with.
function faultsOf(value, type, at, names = '') {
  const wrong = () => [`${at}: ${JSON.stringify(value)} is no ${checker.typeToString(type)}`];
  const within = (faults) => faults.map((fault) => `${at}: ${fault}`);
  if (type.flags & (ts.TypeFlags.Any | ts.TypeFlags.Unknown)) {
    return [];
  }
  if (type.isUnion()) {
    const each = type.types.map((one) => faultsOf(value, one, at, names));
    const isDeep = (faults) => faults.some((fault) => !fault.startsWith(`${at}: `));
    return each.find((faults) => faults.length === 0) ?? each.find(isDeep) ?? wrong();
  }
  if (type.flags & (ts.TypeFlags.Null | ts.TypeFlags.Void)) {
    return value === null ? [] : wrong();
  }
  if (type.isStringLiteral() || type.isNumberLiteral()) {
    return value === type.value ? [] : wrong();
  }
  if (type.flags & ts.TypeFlags.BooleanLiteral) {
    return String(value) === type.intrinsicName && typeof value === 'boolean' ? [] : wrong();
  }
  if (type.flags & ts.TypeFlags.Number) {
    return typeof value === 'number' ? within(numberFault(value, names)) : wrong();
  }
  if (type.flags & ts.TypeFlags.String) {
    return typeof value === 'string' ? within(textFault(value, names)) : wrong();
  }
  if (type.flags & ts.TypeFlags.NonPrimitive) {
    return value !== null && typeof value === 'object' ? [] : wrong();
  }
  if (checker.isTupleType(type)) {
    const items = checker.getTypeArguments(type);
    const fits = Array.isArray(value) && value.length === items.length;
    return fits ? items.flatMap((item, i) => faultsOf(value[i], item, `${at}[${i}]`, names)) : wrong();
  }
  if (checker.isArrayType(type)) {
    const [item] = checker.getTypeArguments(type);
    return Array.isArray(value) ? value.flatMap((one, i) => faultsOf(one, item, `${at}[${i}]`, names)) : wrong();
  }
  if (!(type.flags & (ts.TypeFlags.Object | ts.TypeFlags.Intersection))) {
    return wrong(); // undefined and never, which no JSON is
  }
  if (value === null || typeof value !== 'object' || Array.isArray(value)) {
    return wrong();
  }
  const members = checker.getPropertiesOfType(type);
  const [others] = checker.getIndexInfosOfType(type);
  const missing = members.filter((member) => !(member.flags & ts.SymbolFlags.Optional) && !(member.name in value));
  const faults = missing.map((member) => `${at}: it lacks ${member.name}`);
  for (const [name, one] of Object.entries(value)) {
    const member = members.find((each) => each.name === name);
    const place = `${at}.${name}`;
    if (member) {
      const declared = member.declarations?.find((each) => each.type)?.type.getText() ?? '';
      faults.push(...faultsOf(one, checker.getTypeOfSymbol(member), place, declared));
    } else if (others) {
      faults.push(...faultsOf(one, others.type, place));
    } else {
      faults.push(`${place}: ${checker.typeToString(type)} has no such member`);
    }
  }
  return faults;
}

const isOwnAffair = (method) => method.startsWith('$/'); // either side may have more of these

// Of a request or a notification by 'client' or 'server'.
function faultsOfCall(message, sender) {
  const isRequest = message !== null && typeof message === 'object' && 'id' in message;
  const around = faultsOf(message, typeNamed(isRequest ? 'AnyRequest' : 'AnyNotification'), 'message');
  if (around.length > 0) {
    return around;
  }
  const known = methods.get(message.method);
  if (known === undefined) {
    return isOwnAffair(message.method) && !isRequest ? [] : [`there is no method ${message.method}`];
  }
  const faults = known.isRequest === isRequest ? [] : [`${message.method} is ${isRequest ? 'no' : 'a'} request`];
  if (known.direction !== 'both' && !known.direction.startsWith(sender)) {
    faults.push(`${message.method} is not for a ${sender} to send`);
  }
  if (known.params === undefined) {
    return 'params' in message ? [...faults, `${message.method} has no params`] : faults;
  }
  faults.push(...faultsOf(message.params ?? null, known.params, 'params'));
  for (const { method, registerOptions } of message.params?.registrations ?? []) {
    const options = methods.get(method)?.registration;
    faults.push(...(options ? faultsOf(registerOptions, options, 'registerOptions') : [`nobody registers ${method}`]));
  }
  return faults;
}

// Of an answer to a request of that method; undefined if the request was too broken to have one.
function faultsOfAnswer(message, method) {
  const known = methods.get(method);
  if ('error' in message) {
    const faults = faultsOf(message, typeNamed('AnyError'), 'message');
    const data = message.error?.data;
    return known && data !== undefined ? [...faults, ...faultsOf(data, known.error, 'error.data')] : faults;
  }
  const faults = faultsOf(message, typeNamed('AnyResult'), 'message');
  return [...faults, ...(known ? faultsOf(message.result, known.result, 'result') : [`${method} has no result`])];
}

// Whether params of that method have such a member.
function takes(method, member) {
  const params = methods.get(method)?.params;
  return params !== undefined && checker.getPropertyOfType(params, member) !== undefined;
}

module.exports = { faultsOfCall, faultsOfAnswer, takes };
