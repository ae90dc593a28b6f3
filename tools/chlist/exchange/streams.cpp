// The list holds one video and one audio stream, which may be Dolby when there is no other.
#include "chlist/exchange/streams.h"

#include <algorithm>
#include <initializer_list>

#include "chlist/fields/pids.h"

namespace chlist {
namespace {

using stream_row = std::vector<elementary_stream>;

bool is_one_of(stream_kind kind, std::initializer_list<stream_kind> wanted) {
  return std::ranges::find(wanted, kind) != wanted.end();
}

// The stream that a PID of the list is of: the one that has it, else the first of its wanted.
stream_row::iterator stream_for(stream_row &all, std::uint16_t pid, std::initializer_list<stream_kind> wanted) {
  const auto is_its_own = [&](const elementary_stream &each) {
    return each.pid == pid && is_one_of(each.kind, wanted);
  };
  if (const auto own = std::ranges::find_if(all, is_its_own); own != all.end()) {
    return own;
  }
  for (const stream_kind kind : wanted) {
    if (const auto first = std::ranges::find(all, kind, &elementary_stream::kind); first != all.end()) {
      return first;
    }
  }
  return all.end();
}

// Brings it in front of the others of its kind.
void put_first(stream_row &all, stream_row::iterator which) {
  const auto first = std::ranges::find(all, which->kind, &elementary_stream::kind);
  std::rotate(first, which, which + 1);
}

void give_pid(stream_row &all, std::uint16_t pid, std::initializer_list<stream_kind> wanted) {
  if (!is_stream_pid(pid)) {
    return;
  }
  const auto found = stream_for(all, pid, wanted);
  if (found == all.end()) {
    all.push_back({pid, *wanted.begin(), 0, {}});
    return;
  }
  found->pid = pid;
  put_first(all, found);
}

}  // namespace

std::vector<elementary_stream> streams_of(const line_up_service &service) {
  stream_row all = service.further.streams;
  give_pid(all, service.fields.video_pid, {stream_kind::video});
  give_pid(all, service.fields.audio_pid, {stream_kind::audio, stream_kind::dolby});
  return all;
}

std::string value_of(const further_facts &facts, tuning_parameter parameter) {
  const auto found = facts.tuned.find(parameter);
  return found != facts.tuned.end() ? found->second : std::string();
}

}  // namespace chlist
