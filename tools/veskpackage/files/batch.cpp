// SPDX-License-Identifier: Apache-2.0
#include "files/batch.hpp"

#include "files/inputfiles.hpp"
#include "output/complaint.hpp"
#include "usagefault.hpp"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <iostream>
#include <memory>
#include <mutex>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace tool
{

bool Inputs::areMany() const
{
  return files.size() != 1 || !filesFrom.empty() || isFolder(files.front());
}

namespace
{
/// Says on a terminal how far the work is, once it has taken a while.
class Progress
{
public:
  void count()
  {
    ++done;
    const auto now = std::chrono::steady_clock::now();
    if (isTerminal && now - shown > std::chrono::seconds(1))
    {
      shown = now;
      isShown = true;
      std::cerr << '\r' << done << " files" << std::flush;
    }
  }

  /// Before anything else is printed.
  void clear()
  {
    if (isShown)
    {
      isShown = false;
      std::cerr << "\r\x1b[K" << std::flush;
    }
  }

private:
  const bool isTerminal = isatty(STDERR_FILENO) != 0;
  std::size_t done = 0;
  std::chrono::steady_clock::time_point shown = std::chrono::steady_clock::now();
  bool isShown = false;
};

/// The work on one file, from when a thread has taken it until it is printed.
struct Job
{
  InputFile file;
  std::ostringstream out;
  std::ostringstream complaints;
  ExitCode code = Done;
  Rest rest; // of the work; none when all is done
  bool isDone = false;
};

/// Does what is asked about a file, but for what has to wait for its turn.
using JobWork = std::function<void(Job& job)>;

/// Runs a part of the work on a file.
template <class Part>
void attempt(Job& job, const Part& part)
{
  try
  {
    part();
  }
  catch (const std::exception& error) // such as that memory ran out; others may need less
  {
    complain(job.complaints, job.file.path, error.what());
    job.code = FileTrouble;
  }
}

class Batch
{
public:
  Batch(const Inputs& inputs, JobWork toDo, std::string between, LeftOut isLeftOut)
      : jobs(inputs.jobs), files(inputs, std::move(isLeftOut)), work(std::move(toDo)),
        separator(std::move(between))
  {}

  ExitCode run()
  {
    std::vector<std::thread> others;
    try
    {
      for (int i = 1; i < jobs; ++i)
      {
        others.emplace_back([this] { workOn(); });
      }
    }
    catch (const std::system_error&) // no more threads can be had: fewer do
    {}
    workOn();
    for (std::thread& other : others)
    {
      other.join();
    }
    progress.clear();
    if (badList)
    {
      std::rethrow_exception(badList);
    }
    if (files.haveGivenNone())
    {
      throw UsageFault("veskpackage: error: " + files.searched());
    }
    return code;
  }

private:
  void workOn()
  {
    while (const std::shared_ptr<Job> job = take())
    {
      attempt(*job, [&] { work(*job); });
      finish(*job);
    }
  }

  std::shared_ptr<Job> take()
  {
    // Not the mutex of the results, since reading a list of files from a pipe may block.
    const std::lock_guard<std::mutex> turn(filesMutex);
    {
      std::unique_lock<std::mutex> lock(mutex);
      // One file that takes long must not let the results of all others pile up.
      const std::size_t most = std::size_t{16} * static_cast<std::size_t>(jobs);
      printed.wait(lock, [this, most] { return unprinted.size() < most; });
      if (isFull)
      {
        return nullptr;
      }
    }
    std::optional<InputFile> file = nextFile();
    if (!file)
    {
      return nullptr;
    }
    auto job = std::make_shared<Job>();
    job->file = std::move(*file);
    const std::lock_guard<std::mutex> lock(mutex);
    unprinted.push_back(job);
    return job;
  }

  /// None also when the list of files turns out to be bad; its error is for the caller's thread.
  std::optional<InputFile> nextFile()
  {
    try
    {
      return badList ? std::nullopt : files.next();
    }
    catch (const std::runtime_error&)
    {
      badList = std::current_exception();
      return std::nullopt;
    }
  }

  void finish(Job& finished)
  {
    const std::lock_guard<std::mutex> lock(mutex);
    finished.isDone = true;
    while (!unprinted.empty() && unprinted.front()->isDone)
    {
      print(*unprinted.front());
      unprinted.pop_front();
    }
    printed.notify_all();
  }

  void print(Job& job)
  {
    if (job.rest)
    {
      attempt(job, [&job] { job.code = job.rest(job.out, job.complaints); });
    }
    code = std::max(code, job.code);
    progress.count();
    const std::string out = job.out.str();
    const std::string complaints = job.complaints.str();
    if (!out.empty() || !complaints.empty())
    {
      progress.clear();
      std::cerr << complaints << std::flush;
      isFull =
          isFull || !(std::cout << (hasPrinted && !out.empty() ? separator : "") << out).flush();
      hasPrinted = hasPrinted || !out.empty();
    }
  }

  const int jobs;
  std::mutex filesMutex;
  InputFiles files; // while filesMutex is held, as is the next
  std::exception_ptr badList;
  const JobWork work;
  const std::string separator;
  std::mutex mutex; // of all that follows
  std::condition_variable printed;
  std::deque<std::shared_ptr<Job>> unprinted; // in the order of files
  Progress progress;
  ExitCode code = Done;
  bool hasPrinted = false;
  bool isFull = false; // standard output takes no more; main() reports that
};
} // namespace

ExitCode forEachFile(const Inputs& inputs, const Work& work, const std::string& separator)
{
  return Batch(inputs,
               [&work](Job& job) { job.code = work(job.file.path, job.out, job.complaints); },
               separator, {})
      .run();
}

ExitCode forEachFileInOrder(const Inputs& inputs, const WorkWithRest& work,
                            const LeftOut& isLeftOut)
{
  return Batch(
             inputs, [&work](Job& job) { job.rest = work(job.file); }, {}, isLeftOut)
      .run();
}

} // namespace tool
