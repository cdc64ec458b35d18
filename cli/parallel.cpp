#include "parallel.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace quill::cli {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kProgressDelay = std::chrono::seconds(1);
constexpr auto kProgressTick = std::chrono::milliseconds(100);

// The progress line on stderr, drawn at most ten times a second once the run
// is a second old, and erased before any output so it never mixes with it.
class ProgressLine {
 public:
  ProgressLine(bool enabled, std::size_t total) : enabled_(enabled), total_(total), start_(Clock::now()) {}
  ~ProgressLine() { Erase(); }
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  void Update(std::size_t done) {
    if (!enabled_) return;
    const Clock::time_point now = Clock::now();
    if (now - start_ < kProgressDelay || now - lastDrawn_ < kProgressTick) return;
    std::fflush(stdout);
    std::fprintf(stderr, "\rquill: %zu/%zu files\x1b[K", done, total_);
    std::fflush(stderr);
    visible_ = true;
    lastDrawn_ = now;
  }

  void Erase() {
    if (!visible_) return;
    std::fputs("\r\x1b[K", stderr);
    std::fflush(stderr);
    visible_ = false;
  }

 private:
  bool enabled_;
  std::size_t total_;
  Clock::time_point start_;
  Clock::time_point lastDrawn_{};
  bool visible_ = false;
};

struct SharedState {
  std::mutex mutex;
  std::condition_variable finished;
  std::vector<char> done;
  std::vector<std::exception_ptr> failures;
  std::size_t next = 0;  // the next item a worker takes
  bool stop = false;
};

void Work(SharedState* state, std::size_t count, const std::function<void(std::size_t)>* work) {
  for (;;) {
    std::size_t item;
    {
      std::lock_guard<std::mutex> lock(state->mutex);
      if (state->stop || state->next == count) return;
      item = state->next++;
    }
    std::exception_ptr failure;
    try {
      (*work)(item);
    } catch (...) {
      failure = std::current_exception();
    }
    {
      std::lock_guard<std::mutex> lock(state->mutex);
      state->failures[item] = failure;
      state->done[item] = 1;
    }
    state->finished.notify_all();
  }
}

// Stops and joins the workers however the calling thread leaves.
class WorkerGroup {
 public:
  explicit WorkerGroup(SharedState* state) : state_(state) {}
  ~WorkerGroup() {
    {
      std::lock_guard<std::mutex> lock(state_->mutex);
      state_->stop = true;
    }
    for (std::thread& t : threads_) t.join();
  }
  WorkerGroup(const WorkerGroup&) = delete;
  WorkerGroup& operator=(const WorkerGroup&) = delete;

  void Start(std::size_t n, std::size_t count, const std::function<void(std::size_t)>* work) {
    for (std::size_t i = 0; i < n; ++i) threads_.emplace_back(Work, state_, count, work);
  }

 private:
  SharedState* state_;
  std::vector<std::thread> threads_;
};

}  // namespace

unsigned DefaultJobs() {
  return std::max(1u, std::thread::hardware_concurrency());
}

void WriteBytes(std::FILE* stream, std::string_view bytes) {
  if (!bytes.empty()) std::fwrite(bytes.data(), 1, bytes.size(), stream);
}

void RunInOrder(std::size_t count, const RunOptions& options, const std::function<void(std::size_t)>& work,
                const std::function<ItemOutput(std::size_t)>& deliver) {
  if (count == 0) return;
  SharedState state;
  state.done.assign(count, 0);
  state.failures.assign(count, nullptr);
  ProgressLine progress(options.progress, count);
  WorkerGroup workers(&state);
  workers.Start(std::min<std::size_t>(std::max(1u, options.jobs), count), count, &work);

  for (std::size_t item = 0; item < count; ++item) {
    std::exception_ptr failure;
    {
      std::unique_lock<std::mutex> lock(state.mutex);
      while (!state.done[item]) {
        state.finished.wait_for(lock, kProgressTick);
        lock.unlock();
        progress.Update(item);
        lock.lock();
      }
      failure = state.failures[item];
    }
    if (failure) std::rethrow_exception(failure);
    const ItemOutput output = deliver(item);
    if (!output.out.empty() || !output.err.empty()) {
      progress.Erase();
      WriteBytes(stdout, output.out);
      if (!output.err.empty()) {
        std::fflush(stdout);
        WriteBytes(stderr, output.err);
      }
    }
    progress.Update(item + 1);
  }
}

}  // namespace quill::cli
