// SPDX-License-Identifier: Apache-2.0
// What the package's types leave out: the messages around params and results, and what cancels a request.
import { ProtocolNotificationType, integer } from 'vscode-languageserver-protocol';
export * from 'vscode-languageserver-protocol';

export interface AnyRequest {
  jsonrpc: '2.0';
  id: integer | string;
  method: string;
  params?: object;
}
export interface AnyNotification {
  jsonrpc: '2.0';
  method: string;
  params?: object;
}
export interface AnyResult {
  jsonrpc: '2.0';
  id: integer | string;
  result: any;
}
export interface AnyError {
  jsonrpc: '2.0';
  id: integer | string | null;
  error: { code: integer; message: string; data?: any };
}
export declare namespace CancelNotification {
  const method: '$/cancelRequest';
  const type: ProtocolNotificationType<{ id: integer | string }, void>;
}
