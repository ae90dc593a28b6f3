// Names: where they end, how long they say they are, and in which character table they are written.
#include <channel/records.h>
#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "chlist/check/rules.h"
#include "chlist/fields/described.h"
#include "chlist/line_up/list_contents.h"
#include "chlist/text/broadcast_text.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

struct name_field {
  std::string who;
  std::size_t offset;
  std::span<const char> field;
  std::optional<int> length;  // that stands beside it
  severity wrong_length = severity::note;
  std::string_view length_is_for;

  [[nodiscard]] std::string_view text() const { return encoded_text(field); }
};

// The bytes by which a text names its character table (ETSI EN 300 468, annex A).
bool is_table_byte(char byte) {
  return (byte >= 0x01 && byte <= 0x0B) || (byte >= 0x10 && byte <= 0x15) || byte == 0x1F;
}

// Whatever table it is written in. A text of an unknown one is read as another: what it holds is a guess.
void check_characters(const name_field &name, finding_list &findings) {
  const decoded_text decoded = decode_text(name.text());
  if (decoded.has_controls) {
    findings.push_back({name.offset, severity::warning, "control-character",
                        fmt::format("{} holds a control character", name.who),
                        "what the receiver shows in its place is its own choice; a program that prints the name as it "
                        "is obeys it"});
  }
  if (decoded.turns_direction) {
    findings.push_back({name.offset, severity::warning, "direction-override",
                        fmt::format("{} turns the direction in which letters are written", name.who),
                        "where the receiver or another program heeds that, the name looks like another one"});
  }
  if (!decoded.is_whole) {
    findings.push_back({name.offset, severity::warning, "invalid-text",
                        fmt::format("{} holds bytes that mean nothing in its character table", name.who),
                        "the receiver shows others in their place, or none"});
  }
}

void check_table(const name_field &name, finding_list &findings) {
  const std::string_view text = name.text();
  if (text.empty()) {
    return;
  }
  if (names_table(text) && !is_table_byte(text.front())) {
    findings.push_back({name.offset, severity::warning, "unknown-character-table",
                        fmt::format("{} begins with the byte {:#04x}, which selects no character table", name.who,
                                    static_cast<unsigned>(text.front())),
                        "the receiver shows it in a table of its own choice"});
  } else {
    check_characters(name, findings);
  }
}

void check_end(const name_field &name, finding_list &findings) {
  if (name.text().size() == name.field.size()) {
    const bool is_meant = !name.length || *name.length == static_cast<int>(name.field.size());
    findings.push_back({name.offset, is_meant ? severity::note : severity::warning, "unterminated-text",
                        fmt::format("{} has no zero byte in its {} bytes", name.who, name.field.size()),
                        "the text ends with its field"});
  }
}

void check_length(const name_field &name, finding_list &findings) {
  const std::size_t length = name.text().size();
  if (name.length && *name.length != static_cast<int>(length)) {
    findings.push_back({name.offset, name.wrong_length, "wrong-text-length",
                        fmt::format("{} has {}, its length says {}", name.who, counted(length, "byte"), *name.length),
                        std::string(name.length_is_for)});
  }
}

void check_name(const name_field &name, finding_list &findings) {
  check_table(name, findings);
  check_end(name, findings);
  check_length(name, findings);
}

void check_services(const file_records &framed, finding_list &findings) {
  for (const framed_record<channel_st> &service : framed.services()) {
    const std::string who = describe(known_as(*service.record));
    for (const name_slot_st &slot : service.record->name) {
      const bool is_first = &slot == service.record->name;
      check_name({fmt::format("the {}name of service {}", is_first ? "" : "second ", who),
                  service.offset_of(&slot.text), slot.text, slot.name_len, severity::note,
                  "none: the name is shown up to its zero byte"},
                 findings);
      if (is_first && slot.text[0] == '\0') {
        findings.push_back({service.offset_of(&slot.text), severity::note, "no-name",
                            fmt::format("service {} has no name", who), "it is listed without one"});
      }
    }
  }
}

// Providers are searched for by name and length.
void check_group_texts(const file_records &framed, finding_list &findings) {
  for (const group_table &table : groups_of(framed.list())) {
    const bool is_searched = table.one_group == "provider";
    for (const group_st &group : table.used()) {
      check_name({fmt::format("the name of {} {} (id {})", table.one_group, shown(name_in(group.name)), group.id),
                  framed.offset_of(&group.name), group.name, group.name_len,
                  is_searched ? severity::warning : severity::note,
                  is_searched ? "searches for a provider by its name compare the length: this one is not found, and a "
                                "channel search adds it a second time"
                              : "none: the name is shown up to its zero byte"},
                 findings);
    }
  }
}

void check_network_texts(const file_records &framed, finding_list &findings) {
  for (const framed_record<network_ch_st> &network : framed.networks()) {
    const network_ch_st &record = *network.record;
    check_name({fmt::format("the name of network {} (net {}, network {})", shown(name_in(record.network_name)),
                            record.net_index, record.network_id),
                network.offset_of(&record.network_name), record.network_name, std::nullopt, severity::note, ""},
               findings);
  }
}

}  // namespace

void check_texts(const file_records &framed, finding_list &findings) {
  check_group_texts(framed, findings);
  check_network_texts(framed, findings);
  check_services(framed, findings);
}

}  // namespace chlist
