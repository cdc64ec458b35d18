#include "sequence_diff.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace quill::cli {
namespace {

using Index = std::ptrdiff_t;

constexpr Index kFarBefore = -1;
constexpr Index kFarAfter = std::numeric_limits<Index>::max();

struct Range {
  Index xoff, xlim, yoff, ylim;
  bool minimal;
};

struct Split {
  Index xmid, ymid;
  bool loMinimal, hiMinimal;
};

// Divide and conquer on the middle snake of each range (Myers 1986, as in
// GNU diff), with an explicit stack instead of recursion.
class Differ {
 public:
  Differ(std::span<const uint32_t> a, std::span<const uint32_t> b)
      : a_(a),
        b_(b),
        offset_(static_cast<Index>(b.size()) + 1),
        forward_(a.size() + b.size() + 3),
        backward_(a.size() + b.size() + 3) {
    marks_.deleted.assign(a.size(), false);
    marks_.inserted.assign(b.size(), false);
    // Past about the square root of the total size, a range stops looking
    // for the shortest script and splits at the furthest point reached.
    Index limit = 1;
    for (std::size_t n = a.size() + b.size() + 3; n != 0; n >>= 2) limit <<= 1;
    tooExpensive_ = std::max<Index>(4096, limit);
  }

  DiffMarks Run() && {
    std::vector<Range> pending{{0, static_cast<Index>(a_.size()), 0, static_cast<Index>(b_.size()), false}};
    while (!pending.empty()) {
      Range r = pending.back();
      pending.pop_back();
      while (r.xoff < r.xlim && r.yoff < r.ylim && A(r.xoff) == B(r.yoff)) ++r.xoff, ++r.yoff;
      while (r.xoff < r.xlim && r.yoff < r.ylim && A(r.xlim - 1) == B(r.ylim - 1)) --r.xlim, --r.ylim;
      if (r.xoff == r.xlim || r.yoff == r.ylim) {
        MarkAll(r);
        continue;
      }
      const Split s = FindSplit(r);
      const bool atCorner = (s.xmid == r.xoff && s.ymid == r.yoff) || (s.xmid == r.xlim && s.ymid == r.ylim);
      if (atCorner) {
        MarkAll(r);
        continue;
      }
      pending.push_back({s.xmid, r.xlim, s.ymid, r.ylim, s.hiMinimal});
      pending.push_back({r.xoff, s.xmid, r.yoff, s.ymid, s.loMinimal});
    }
    return std::move(marks_);
  }

 private:
  uint32_t A(Index i) const { return a_[static_cast<std::size_t>(i)]; }
  uint32_t B(Index i) const { return b_[static_cast<std::size_t>(i)]; }
  Index& Fd(Index k) { return forward_[static_cast<std::size_t>(k + offset_)]; }
  Index& Bd(Index k) { return backward_[static_cast<std::size_t>(k + offset_)]; }

  void MarkAll(const Range& r) {
    for (Index x = r.xoff; x < r.xlim; ++x) marks_.deleted[static_cast<std::size_t>(x)] = true;
    for (Index y = r.yoff; y < r.ylim; ++y) marks_.inserted[static_cast<std::size_t>(y)] = true;
  }

  Split FindSplit(const Range& r) {
    const Index dmin = r.xoff - r.ylim;
    const Index dmax = r.xlim - r.yoff;
    const Index fmid = r.xoff - r.yoff;
    const Index bmid = r.xlim - r.ylim;
    Index fmin = fmid, fmax = fmid, bmin = bmid, bmax = bmid;
    const bool odd = ((fmid - bmid) & 1) != 0;
    Fd(fmid) = r.xoff;
    Bd(bmid) = r.xlim;
    for (Index c = 1;; ++c) {
      if (fmin > dmin) {
        Fd(--fmin - 1) = kFarBefore;
      } else {
        ++fmin;
      }
      if (fmax < dmax) {
        Fd(++fmax + 1) = kFarBefore;
      } else {
        --fmax;
      }
      for (Index d = fmax; d >= fmin; d -= 2) {
        const Index tlo = Fd(d - 1), thi = Fd(d + 1);
        Index x = tlo < thi ? thi : tlo + 1;
        Index y = x - d;
        while (x < r.xlim && y < r.ylim && A(x) == B(y)) ++x, ++y;
        Fd(d) = x;
        if (odd && bmin <= d && d <= bmax && Bd(d) <= x) return {x, y, true, true};
      }
      if (bmin > dmin) {
        Bd(--bmin - 1) = kFarAfter;
      } else {
        ++bmin;
      }
      if (bmax < dmax) {
        Bd(++bmax + 1) = kFarAfter;
      } else {
        --bmax;
      }
      for (Index d = bmax; d >= bmin; d -= 2) {
        const Index tlo = Bd(d - 1), thi = Bd(d + 1);
        Index x = tlo < thi ? tlo : thi - 1;
        Index y = x - d;
        while (r.xoff < x && r.yoff < y && A(x - 1) == B(y - 1)) --x, --y;
        Bd(d) = x;
        if (!odd && fmin <= d && d <= fmax && x <= Fd(d)) return {x, y, true, true};
      }
      if (!r.minimal && c >= tooExpensive_) return FurthestReach(r, fmin, fmax, bmin, bmax);
    }
  }

  // The forward or backward point that got furthest, whichever is better.
  Split FurthestReach(const Range& r, Index fmin, Index fmax, Index bmin, Index bmax) {
    Index fxybest = -1, fxbest = r.xoff;
    for (Index d = fmax; d >= fmin; d -= 2) {
      Index x = std::min(Fd(d), r.xlim);
      Index y = x - d;
      if (r.ylim < y) x = r.ylim + d, y = r.ylim;
      if (fxybest < x + y) fxybest = x + y, fxbest = x;
    }
    Index bxybest = kFarAfter, bxbest = r.xlim;
    for (Index d = bmax; d >= bmin; d -= 2) {
      Index x = std::max(r.xoff, Bd(d));
      Index y = x - d;
      if (y < r.yoff) x = r.yoff + d, y = r.yoff;
      if (x + y < bxybest) bxybest = x + y, bxbest = x;
    }
    if ((r.xlim + r.ylim) - bxybest < fxybest - (r.xoff + r.yoff)) {
      return {fxbest, fxybest - fxbest, true, false};
    }
    return {bxbest, bxybest - bxbest, false, true};
  }

  std::span<const uint32_t> a_, b_;
  Index offset_;
  std::vector<Index> forward_, backward_;
  Index tooExpensive_ = 4096;
  DiffMarks marks_;
};

}  // namespace

DiffMarks MarkDifferences(std::span<const uint32_t> before, std::span<const uint32_t> after) {
  return Differ(before, after).Run();
}

}  // namespace quill::cli
