#include "chlist/salvage/list_alignment.h"

#include <algorithm>
#include <limits>

namespace chlist {
namespace {

constexpr std::size_t no_piece = std::numeric_limits<std::size_t>::max();

// What a piece that is right is worth; more than that it stands behind the piece in front of it, which decides where
// whole slots were inserted.
constexpr int unit = 4;
constexpr int impossible = std::numeric_limits<int>::min() / 2;

struct best_chain {
  int right = impossible;
  std::size_t last = no_piece;  // the piece that it ends with
};

// Where a chain came to a piece from: the piece in front of it, and that one's shift.
struct link {
  std::size_t piece = no_piece;
  std::size_t shift = no_piece;
};

class chain_search {
 public:
  chain_search(const std::vector<aligned_piece> &pieces, const std::vector<possible_shift> &shifts)
      : pieces_(pieces), shifts_(shifts), best_(shifts.size(), std::vector<best_chain>(pieces.size())),
        links_(shifts.size(), std::vector<link>(pieces.size())),
        reached_(shifts.size(), std::vector<std::size_t>(shifts.size())) {}

  void run(const piece_weight &weight) {
    for (std::size_t piece = 0; piece < pieces_.size(); ++piece) {
      for (std::size_t shift = 0; shift < shifts_.size(); ++shift) {
        best_[shift][piece] = piece > 0 ? best_[shift][piece - 1] : best_chain{};
        if (const int worth = weight(piece, shifts_[shift].shift); worth > 0) {
          take(piece, shift, worth);
        }
      }
    }
  }

  [[nodiscard]] alignment result() const {
    alignment found;
    link at;
    for (std::size_t shift = 0; shift < shifts_.size() && !pieces_.empty(); ++shift) {
      if (const best_chain &chain = best_[shift].back(); chain.last != no_piece && chain.right > found.right) {
        found.right = chain.right;
        at = {chain.last, shift};
      }
    }
    found.right /= unit;
    found.steps = steps_to(at);
    return found;
  }

 private:
  // Of equal chains the one that changes its shift last: a piece of which the first bytes are missing looks right to
  // those who look at its end.
  void take(std::size_t piece, std::size_t shift, int worth) {
    const int cost = shifts_[shift].cost * unit;
    best_chain chain = {worth * unit - (shifts_[shift].shift == 0 ? 0 : cost), piece};
    link from;
    const auto extend = [&](const best_chain &before, std::size_t its_shift) {
      const int beside = before.last + 1 == piece ? 1 : 0;
      const int right = before.right + worth * unit + beside - (its_shift == shift ? 0 : cost);
      if (right >= chain.right) {
        chain.right = right;
        from = {before.last, its_shift};
      }
    };
    for (std::size_t other = 0; other < shifts_.size(); ++other) {
      const best_chain *before = other == shift ? &best_[shift][piece] : chain_in_front(piece, shift, other);
      if (before != nullptr && before->last != no_piece) {
        extend(*before, other);
      }
    }
    if (chain.right >= best_[shift][piece].right) {
      best_[shift][piece] = chain;
      links_[shift][piece] = from;
    }
  }

  // The best chain with another shift that ends, in the file, where this piece begins, or in front of that.
  const best_chain *chain_in_front(std::size_t piece, std::size_t shift, std::size_t other) {
    const std::ptrdiff_t begin = static_cast<std::ptrdiff_t>(pieces_[piece].begin) + shifts_[shift].shift;
    std::size_t &reached = reached_[shift][other];
    while (reached < piece && static_cast<std::ptrdiff_t>(pieces_[reached].end) + shifts_[other].shift <= begin) {
      ++reached;
    }
    return reached > 0 ? &best_[other][reached - 1] : nullptr;
  }

  // A step begins behind the last piece that is right in front of it.
  [[nodiscard]] std::vector<shift_step> steps_to(link at) const {
    std::vector<shift_step> steps;
    while (at.piece != no_piece) {
      const link before = links_[at.shift][at.piece];
      if (before.piece == no_piece && shifts_[at.shift].shift != 0) {
        steps.push_back({pieces_.front().begin, shifts_[at.shift].shift});
      } else if (before.piece != no_piece && before.shift != at.shift) {
        steps.push_back({pieces_[before.piece].end, shifts_[at.shift].shift});
      }
      at = before;
    }
    std::ranges::reverse(steps);
    return steps;
  }

  const std::vector<aligned_piece> &pieces_;
  const std::vector<possible_shift> &shifts_;
  std::vector<std::vector<best_chain>> best_;
  std::vector<std::vector<link>> links_;
  std::vector<std::vector<std::size_t>> reached_;
};

}  // namespace

alignment align(const std::vector<aligned_piece> &pieces, const std::vector<possible_shift> &shifts,
                const piece_weight &weight) {
  chain_search search(pieces, shifts);
  search.run(weight);
  return search.result();
}

}  // namespace chlist
