// From the order, the numbers and the favourites of a line-up to bouquets.
#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <string>

#include "chlist/exchange/enigma2/bouquets.h"
#include "chlist/text/plain_text.h"

namespace chlist {
namespace {

class bouquets_writer {
 public:
  bouquets_writer(const line_up &list, std::span<const service_reference> references)
      : list_(list), references_(references) {}

  std::vector<made_file> write() {
    write_all();
    for (const favourite_group &group : list_.favourites) {
      write_group(group);
    }
    for (std::size_t at = 0; at < bouquet_indexes.size(); ++at) {
      const bouquet_index &index = bouquet_indexes[at];
      made_.push_back({std::string(index.file), std::string(index.beginning) + lines_of_indexes_[at]});
    }
    write_blacklist();
    return std::move(made_);
  }

 private:
  std::string line_of(std::size_t service) const {
    return bouquet_line(references_[service], list_.services[service].fields.service_type) + "\n";
  }

  // The first bouquet, so that a receiver shows its numbers.
  void write_all() {
    std::string text = "#NAME All channels\n";
    for (std::size_t i = 0; i < list_.services.size(); ++i) {
      if (list_.services[i].is_listed) {
        text += gap_before(list_.services[i]) + "#SERVICE " + line_of(i);
      }
    }
    add_bouquet(false, std::string(file_of_all), std::move(text));
  }

  // Numbers rise in a bouquet, and have no minor part.
  std::string gap_before(const line_up_service &service) {
    std::string text;
    const channel_number wanted = service.number.value_or(channel_number{last_number_ + 1});
    if (wanted.major > last_number_ && wanted.major <= largest_channel_number) {
      for (; last_number_ + 1 < wanted.major; ++last_number_) {
        text += std::string(hidden_numbered_marker) + "\n";
      }
    }
    ++last_number_;
    return text;
  }

  void write_group(const favourite_group &group) {
    const bool is_radio = !group.entries.empty() && std::ranges::all_of(group.entries, [&](const auto &entry) {
      return list_.services[entry.service].fields.service_type == SERVICE_TYPE_RADIO;
    });
    std::string text = fmt::format("#NAME {}\n", in_one_line(group.name));
    for (const line_up_entry &entry : group.entries) {
      text += "#SERVICE " + line_of(entry.service);
    }
    add_bouquet(is_radio, file_of_group(++groups_, index_for(is_radio)), std::move(text));
  }

  void add_bouquet(bool is_radio, std::string file, std::string text) {
    lines_of_indexes_[is_radio ? 1 : 0] += line_of_index(index_for(is_radio), file) + "\n";
    made_.push_back({std::move(file), std::move(text)});
  }

  void write_blacklist() {
    std::string text;
    for (std::size_t i = 0; i < list_.services.size(); ++i) {
      text += list_.services[i].has_flag(CHANNEL_FLAG_LOCKED) ? line_of(i) : "";
    }
    if (!text.empty()) {
      made_.push_back({"blacklist", std::move(text)});
    }
  }

  const line_up &list_;
  std::span<const service_reference> references_;
  int last_number_ = 0;
  int groups_ = 0;
  std::array<std::string, bouquet_indexes.size()> lines_of_indexes_;
  std::vector<made_file> made_;
};

}  // namespace

std::string line_of_index(const bouquet_index &index, std::string_view file) {
  return fmt::format("#SERVICE 1:7:{}:0:0:0:0:0:0:0:FROM BOUQUET \"{}\" ORDER BY bouquet", index.type, file);
}

std::string file_of_group(int number, const bouquet_index &index) {
  return fmt::format("userbouquet.favourites_{:02}.{}", number, index.ending);
}

std::vector<made_file> write_bouquets(const line_up &list, std::span<const service_reference> references) {
  return bouquets_writer(list, references).write();
}

}  // namespace chlist
