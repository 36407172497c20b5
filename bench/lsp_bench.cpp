// SPDX-License-Identifier: Apache-2.0
// Time from a change in an editor to what the language server finds, beside that of reading the manifest,
// and the memory of the server before and after many changes.
#include "samplepackage.hpp"

#include <QFile>
#include <QProcess>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>

namespace
{
using Clock = std::chrono::steady_clock;

/// A server, and the editor that talks with it.
class Editor
{
public:
  explicit Editor(const QByteArray& text)
  {
    server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    server.start(QStringLiteral(TOOL), {QStringLiteral("lsp")});
    send(R"({"jsonrpc":"2.0","id":1,"method":"initialize","params":{"capabilities":{}}})");
    await("capabilities");
    QByteArray escaped = text;
    escaped.replace('\\', "\\\\").replace('"', "\\\"").replace('\n', "\\n");
    send(R"({"jsonrpc":"2.0","method":"textDocument/didOpen","params":{"textDocument":{)"
         R"("uri":"untitled:a","languageId":"xml","version":0,"text":")" +
         escaped + R"("}}})");
    await("publishDiagnostics");
  }
  Editor(const Editor&) = delete;
  Editor& operator=(const Editor&) = delete;
  ~Editor()
  {
    server.closeWriteChannel();
    server.waitForFinished();
  }

  /// Types a character at the beginning of a line, or takes it away, and waits for the findings.
  void change()
  {
    const bool isTyped = ++version % 2 == 1;
    const QByteArray number = QByteArray::number(version);
    send(R"({"jsonrpc":"2.0","method":"textDocument/didChange","params":{"textDocument":{)"
         R"("uri":"untitled:a","version":)" +
         number + R"(},"contentChanges":[{"range":{"start":{"line":2,"character":0},)" +
         R"("end":{"line":2,"character":)" + (isTyped ? "0" : "1") + R"(}},"text":")" +
         (isTyped ? " " : "") + R"("}]}})");
    await("\"version\":" + number + '}');
  }

  /// In kilobytes.
  long memory() const
  {
    QFile status(QStringLiteral("/proc/%1/status").arg(server.processId()));
    status.open(QIODevice::ReadOnly);
    const QByteArray text = status.readAll();
    return text.mid(text.indexOf("VmRSS:") + 6).trimmed().split(' ').first().toLong();
  }

private:
  void send(const QByteArray& message)
  {
    server.write("Content-Length: " + QByteArray::number(message.size()) + "\r\n\r\n" + message);
    server.waitForBytesWritten();
  }

  void await(const QByteArray& sign)
  {
    QByteArray received;
    while (!received.contains(sign))
    {
      if (!server.waitForReadyRead())
      {
        static_cast<void>(std::fputs("the server does not answer\n", stderr));
        std::exit(1);
      }
      received += server.readAll();
    }
  }

  QProcess server;
  int version = 0;
};

/// Microseconds, of the run that took the least.
long leastOf(int runs, const std::function<void()>& work)
{
  auto least = Clock::duration::max();
  for (int i = 0; i < runs; ++i)
  {
    const auto start = Clock::now();
    work();
    least = std::min(least, Clock::now() - start);
  }
  return static_cast<long>(std::chrono::duration_cast<std::chrono::microseconds>(least).count());
}

void measure()
{
  std::printf("%10s %10s %10s %8s %12s %12s\n", "KiB", "change us", "load us", "ratio",
              "KiB before", "KiB after");
  for (const int behaviors : {30, 780})
  {
    const QString path = sampleManifestPath(behaviors);
    writeSampleManifest(path, behaviors);
    const std::string text = contentOf(path);
    Editor editor(QByteArray::fromStdString(text));
    const int runs = behaviors > 100 ? 50 : 1000;
    long change = leastOf(runs, [&editor] { editor.change(); });
    vesk::PackageInfo package;
    const long load = leastOf(runs, [&] { package.loadFromManifestFile(path.toStdString()); });
    change = std::min(change, leastOf(runs, [&editor] { editor.change(); }));
    const long before = editor.memory();
    for (int i = 0; i < (behaviors > 100 ? 1000 : 10000); ++i)
    {
      editor.change();
    }
    std::printf("%10zu %10ld %10ld %8.1f %12ld %12ld\n", text.size() / 1024, change, load,
                static_cast<double>(change) / static_cast<double>(load), before, editor.memory());
    QFile::remove(path);
  }
}
} // namespace

int main()
try
{
  measure();
  return 0;
}
catch (const std::exception& error)
{
  static_cast<void>(std::fprintf(stderr, "%s\n", error.what()));
  return 1;
}
