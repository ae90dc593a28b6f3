// From bouquets to the order, the numbers and the favourites of a line-up.
#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <string>
#include <unordered_map>
#include <utility>

#include "chlist/exchange/enigma2/bouquets.h"
#include "chlist/exchange/field_reading.h"
#include "chlist/exchange/text_lines.h"

namespace chlist {
namespace {

// What stands behind a keyword, which a colon may follow: "#SERVICE 1:0:..." and "#SERVICE: 1:0:..."
std::optional<std::string_view> behind(std::string_view line, std::string_view keyword) {
  if (!line.starts_with(keyword)) {
    return std::nullopt;
  }
  line.remove_prefix(keyword.size());
  if (line.starts_with(':')) {
    line.remove_prefix(1);
  }
  if (!line.empty() && line.front() != ' ') {
    return std::nullopt;
  }
  return line.substr(line.empty() ? 0 : 1);
}

// FROM BOUQUET "name" ORDER BY bouquet; older indexes have the name alone.
std::string file_named_in(std::string_view path) {
  const auto [before, quoted_on] = split_at_first(path, '"');
  const auto [quoted_name, after] = split_at_first(quoted_on.value_or(std::string_view()), '"');
  const bool is_query = before.starts_with("FROM BOUQUET");
  const std::string_view name = !is_query ? without_blanks_around(path) : after ? quoted_name : std::string_view();
  if (name.empty() || name.find_first_of(std::string_view("/\"\0", 3)) != std::string_view::npos) {
    throw bad_line("names no bouquet of this folder");
  }
  return std::string(name);
}

// Titles between the bouquets: "----TOP----".
bool is_like_separator(std::string_view name) {
  const auto is_ornament = [](char c) { return c > ' ' && std::ispunct(static_cast<unsigned char>(c)) != 0; };
  return !name.empty() && is_ornament(name.front()) && is_ornament(name.back());
}

struct bouquet {
  struct entry {
    std::size_t service = 0;
    int number = 0;
  };
  std::string file;
  std::string name;
  std::vector<entry> entries;
  bool has_references = false;   // to whatever
  bool is_order_of_all = false;  // no group, but what all services are numbered by

  [[nodiscard]] bool is_separator() const {
    return entries.empty() && !is_order_of_all && (has_references || is_like_separator(name));
  }
};

// Reads the files one by one. Numbers run on until they are begun anew.
class bouquets_reader {
 public:
  bouquets_reader(const folder_files &files, lamedb_services &services, loss_counts &lost)
      : files_(files), services_(services), lost_(lost) {}

  // The user bouquets that a file names; none when it is not there.
  std::vector<bouquet> read_bouquets(const std::string &file) {
    std::vector<bouquet> made;
    std::unordered_map<std::string, int> numbers_of_files;
    next_number_ = 1;
    for_each_line_of(file, [&](std::string_view line) {
      if (const auto reference = behind(line, "#SERVICE")) {
        const bouquet_reference named = read_bouquet_reference(without_leading_blanks(*reference));
        if (named.is_marker()) {
          lost_.add("markers");
          return;
        }
        const std::string name = file_named_in(named.path);
        const auto [known, is_new] = numbers_of_files.try_emplace(name, 0);
        if (!is_new) {
          take_numbers(known->second);
          throw bad_line("names " + quoted(std::string_view(name)) + " once more");
        }
        const int before = next_number_;
        auto read = read_bouquet(name);
        known->second = next_number_ - before;
        if (!read) {
          throw bad_line(quoted(std::string_view(name)) + " is not in the folder");
        }
        read->is_order_of_all = file == index_for(false).file && name == file_of_all;
        take_bouquet(std::move(*read), made);
      }
    });
    return made;
  }

 private:
  // Numbers beyond the largest are none, however far beyond.
  void take_numbers(int count) { next_number_ = std::min(next_number_ + count, beyond_all_numbers); }

  void take_bouquet(bouquet read, std::vector<bouquet> &into) {
    if (read.is_separator()) {
      lost_.add("bouquets without a service");
    } else {
      into.push_back(std::move(read));
    }
  }

  std::optional<bouquet> read_bouquet(const std::string &file) {
    bouquet made{.file = file, .name = {}, .entries = {}};
    const int numbered_before = std::exchange(next_number_, file == file_of_all ? 1 : next_number_);
    described_ = nullptr;
    const bool is_there = for_each_line_of(file, [&](std::string_view line) { read_line(line, made); });
    if (file == file_of_all) {
      next_number_ = numbered_before;
    }
    return is_there ? std::optional(std::move(made)) : std::nullopt;
  }

  void read_line(std::string_view line, bouquet &into) {
    if (const auto name = behind(line, "#NAME")) {
      into.name = *name;
    } else if (const auto reference = behind(line, "#SERVICE")) {
      described_ = nullptr;
      into.has_references = true;
      add(read_bouquet_reference(without_leading_blanks(*reference)), into);
    } else if (const auto description = behind(line, "#DESCRIPTION")) {
      count_description(*description);
    } else if (line.front() != '#') {
      throw bad_line("is no line of a bouquet");
    }
  }

  // All but markers, of which only some are numbered, and bouquets take a number.
  void add(const bouquet_reference &reference, bouquet &into) {
    if (reference.is_marker()) {
      const bool is_numbered = (reference.flags & bouquet_reference::numbered_marker) != 0;
      take_numbers(is_numbered ? 1 : 0);
      lost_.add("markers", is_numbered ? 0 : 1);
      return;
    }
    if ((reference.flags & bouquet_reference::directory) != 0) {
      lost_.add("bouquets within bouquets");
      return;
    }
    const int number = next_number_;
    take_numbers(1);
    if (!reference.is_service()) {
      lost_.add("streams, alternatives and other things that are no DVB service");
      return;
    }
    const auto place = services_.places.find(reference.service);
    if (place == services_.places.end()) {
      throw bad_line("its service is not in the lamedb");
    }
    lost_.add(names_given, reference.has_name ? 1 : 0);
    described_ = &services_.list.services[place->second];
    into.entries.push_back({place->second, number});
  }

  void count_description(std::string_view description) {
    if (described_ != nullptr && description != described_->name) {
      lost_.add(names_given);
    }
    described_ = nullptr;
  }

  // Whether the file is there.
  template <class Function>
  bool for_each_line_of(const std::string &file, Function function) {
    const std::optional<std::string> text = files_(file);
    text_lines lines(text ? *text : std::string_view());
    while (const auto line = lines.next()) {
      try {
        if (!line->empty()) {
          function(*line);
        }
      } catch (const bad_line &bad) {
        services_.list.skipped.push_back({lines.number(), file + ": " + bad.reason});
      }
    }
    return text.has_value();
  }

  static constexpr int beyond_all_numbers = 1'000'000'000;
  static constexpr std::string_view names_given = "names given in bouquets";

  const folder_files &files_;
  lamedb_services &services_;
  loss_counts &lost_;
  int next_number_ = 1;
  const line_up_service *described_ = nullptr;
};

// Puts the services of a line-up into an order, and its favourites with them.
class ordered_list {
 public:
  explicit ordered_list(line_up list) : list_(std::move(list)), places_(list_.services.size(), nowhere) {}

  // A service that is there already stays where it is.
  void append(std::size_t service, std::optional<channel_number> number) {
    if (places_[service] != nowhere) {
      return;
    }
    places_[service] = order_.size();
    order_.push_back(service);
    list_.services[service].number = number;
  }

  void append_others(bool are_listed) {
    for (std::size_t service = 0; service < places_.size(); ++service) {
      if (places_[service] == nowhere) {
        list_.services[service].is_listed = are_listed;
        append(service, std::nullopt);
      }
    }
  }

  line_up with_favourites(const std::vector<bouquet> &bouquets) {
    line_up made;
    made.skipped = std::move(list_.skipped);
    for (const std::size_t service : order_) {
      made.services.push_back(std::move(list_.services[service]));
    }
    for (const bouquet &each : bouquets) {
      favourite_group group{.name = each.name, .entries = {}, .origin = each.file};
      std::ranges::transform(each.entries, std::back_inserter(group.entries), [&](const bouquet::entry &entry) {
        return line_up_entry{places_[entry.service], {}};
      });
      made.favourites.push_back(std::move(group));
    }
    return made;
  }

 private:
  static constexpr std::size_t nowhere = static_cast<std::size_t>(-1);

  line_up list_;
  std::vector<std::size_t> places_;
  std::vector<std::size_t> order_;
};

std::optional<channel_number> valid_number(int number) {
  return number <= largest_channel_number ? std::optional(channel_number{number}) : std::nullopt;
}

void append_numbered(ordered_list &made, const bouquet &from, int numbered_before) {
  for (const bouquet::entry &entry : from.entries) {
    made.append(entry.service, valid_number(numbered_before + entry.number));
  }
}

int largest_number(const std::vector<bouquet> &bouquets) {
  int largest = 0;
  for (const bouquet &each : bouquets) {
    largest = each.entries.empty() ? largest : std::max(largest, each.entries.back().number);
  }
  return largest;
}

// What a function reads; nothing of what it throws bad_line for.
template <class Read>
auto if_readable(const Read &read) -> std::optional<decltype(read())> {
  try {
    return read();
  } catch (const bad_line &) {
    return std::nullopt;
  }
}

}  // namespace

std::optional<bouquet_reference> reference_in_line(std::string_view line) {
  const std::string_view reference = behind(line, "#SERVICE").value_or(line);
  return if_readable([&] { return read_bouquet_reference(without_blanks_around(reference)); });
}

std::optional<std::string> bouquet_named_in(std::string_view line) {
  const auto named = behind(line, "#SERVICE") ? reference_in_line(line) : std::nullopt;
  return named && !named->is_marker() ? if_readable([&] { return file_named_in(named->path); }) : std::nullopt;
}

line_up with_bouquets(const folder_files &files, lamedb_services services, loss_counts &lost) {
  bouquets_reader read(files, services, lost);
  std::vector<bouquet> television = read.read_bouquets(std::string(index_for(false).file));
  std::vector<bouquet> radio = read.read_bouquets(std::string(index_for(true).file));
  ordered_list made(std::move(services.list));
  if (const auto all = std::ranges::find(television, true, &bouquet::is_order_of_all); all != television.end()) {
    append_numbered(made, *all, 0);
    made.append_others(false);
    television.erase(all);
  } else {
    const int numbered_television = largest_number(television);
    std::ranges::for_each(television, [&](const bouquet &each) { append_numbered(made, each, 0); });
    std::ranges::for_each(radio, [&](const bouquet &each) { append_numbered(made, each, numbered_television); });
    made.append_others(true);
  }
  std::ranges::move(radio, std::back_inserter(television));
  return made.with_favourites(television);
}

void read_blacklist(const folder_files &files, lamedb_services &services, loss_counts &lost) {
  const std::optional<std::string> text = files("blacklist");
  text_lines lines(text ? *text : std::string_view());
  while (const auto line = lines.next()) {
    try {
      if (line->empty()) {
        continue;
      }
      const bouquet_reference reference = read_bouquet_reference(*line);
      const auto place = services.places.find(reference.service);
      if (!reference.is_service()) {
        lost.add("locks of what is no DVB service");
      } else if (place == services.places.end()) {
        throw bad_line("its service is not in the lamedb");
      } else {
        services.list.services[place->second].set_flag(CHANNEL_FLAG_LOCKED, true);
      }
    } catch (const bad_line &bad) {
      services.list.skipped.push_back({lines.number(), "blacklist: " + bad.reason});
    }
  }
}

}  // namespace chlist
