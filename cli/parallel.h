// Processing many files on all cores while keeping the output in input
// order.
#ifndef QUILL_CLI_PARALLEL_H_
#define QUILL_CLI_PARALLEL_H_

#include <cstddef>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>

namespace quill::cli {

struct RunOptions {
  unsigned jobs = 1;      // worker threads, at least 1
  bool progress = false;  // show "done/total" on stderr once a run takes over a second
};

// What one item prints: `out` goes to stdout, then `err` to stderr.
struct ItemOutput {
  std::string out;
  std::string err;
};

// Calls work(i) for every i in [0, count) on worker threads and deliver(i) on
// the calling thread in increasing i, each as soon as work(i) and all
// earlier deliveries are done, and prints what deliver(i) returns. work(i)
// may only touch item i's own data; everything it wrote is visible to
// deliver(i). An exception thrown by work(i) is rethrown on the calling
// thread at its turn, after the workers have stopped.
void RunInOrder(std::size_t count, const RunOptions& options, const std::function<void(std::size_t)>& work,
                const std::function<ItemOutput(std::size_t)>& deliver);

// Writes bytes to a stream as they are.
void WriteBytes(std::FILE* stream, std::string_view bytes);

// The number of hardware threads, at least 1.
unsigned DefaultJobs();

}  // namespace quill::cli

#endif  // QUILL_CLI_PARALLEL_H_
