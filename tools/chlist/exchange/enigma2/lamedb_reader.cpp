// From the text of a lamedb to services. What cannot be read is skipped: a transponder with all its services, a service
// with its name and options.
#include <fmt/format.h>

#include <array>
#include <stdexcept>
#include <utility>

#include "chlist/exchange/broadcast_service.h"
#include "chlist/exchange/enigma2/bouquets.h"
#include "chlist/exchange/enigma2/lamedb.h"
#include "chlist/exchange/enigma2/lamedb_fields.h"
#include "chlist/exchange/field_reading.h"
#include "chlist/exchange/text_lines.h"
#include "chlist/fields/service_types.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view first_line = "eDVB services /";

// Nothing when a line is not the first of a lamedb.
std::optional<std::string_view> version_of(std::string_view line) {
  if (!line.starts_with(first_line)) {
    return std::nullopt;
  }
  line.remove_prefix(first_line.size());
  return line.substr(0, line.find('/'));
}

class lamedb_reader {
 public:
  lamedb_reader(std::string_view text, loss_counts &lost) : lines_(text), lost_(lost) {}

  lamedb_services read() {
    const auto version = version_of(lines_.next().value_or(std::string_view()));
    if (!version) {
      throw std::runtime_error("is no lamedb: the first line is not \"eDVB services /4/\"");
    }
    if (*version == "3" || *version == "4") {
      read_sections();
    } else if (*version == "5") {
      read_lines();
    } else {
      throw std::runtime_error("lamedb of version " + quoted(*version) + ": only 3, 4 and 5 are known");
    }
    return std::move(made_);
  }

 private:
  void read_sections() {
    bool has_services = false;
    while (const auto line = lines_.next()) {
      if (*line == "transponders") {
        read_transponders();
      } else if (*line == "services") {
        has_services = true;
        read_services();
      } else if (!has_services && !line->empty()) {
        skip(lines_.number(), "stands in no section");
      }
    }
    if (!has_services) {
      skip(lines_.number(), "the file ends before its services");
    }
  }

  // Calls a function for each line up to "end".
  template <class Function>
  void for_each_line_to_end(Function function) {
    while (const auto line = lines_.next()) {
      if (*line == "end") {
        return;
      }
      guarded(lines_.number(), [&] { function(*line); });
    }
    skip(lines_.number(), "the file ends within a section");
  }

  // "NAMESPACE:TSID:ONID", the parameters, "/".
  void read_transponders() {
    for_each_line_to_end([&](std::string_view line) {
      if (line == "/" || line.empty()) {
        return;
      }
      const std::size_t number = lines_.number();
      const std::string_view parameters =
          next_unless([](std::string_view next) { return next == "/" || next == "end"; });
      add_transponder(number, line, parameters);
    });
  }

  // The service, its name, its options.
  void read_services() {
    for_each_line_to_end([&](std::string_view line) {
      if (!is_like_service_line(line)) {
        throw bad_line("is no service");
      }
      const std::size_t number = lines_.number();
      const std::string_view name = next_unless([](std::string_view) { return false; });
      const std::string_view options =
          next_unless([](std::string_view next) { return next == "end" || is_like_service_line(next); });
      add_service(number, line, name, options);
    });
  }

  void read_lines() {
    while (const auto line = lines_.next()) {
      if (line->empty() || line->front() == '#') {
        continue;
      }
      guarded(lines_.number(), [&] { read_line(*line); });
    }
  }

  // "t:NAMESPACE:TSID:ONID,s:..." or "s:SID:...,"name",p:..."
  void read_line(std::string_view line) {
    const auto [what, rest] = split_at_first(line.substr(std::min<std::size_t>(line.size(), 2)), ',');
    if (line.starts_with("t:")) {
      add_transponder(lines_.number(), what, rest.value_or(std::string_view()));
    } else if (line.starts_with("s:")) {
      const auto [name, options] = take_name(rest.value_or(std::string_view()));
      add_service(lines_.number(), what, name, options);
    } else {
      throw bad_line("is neither a transponder nor a service");
    }
  }

  // The name ends at the first quotation mark that options or nothing follow: names may hold quotation marks.
  static std::pair<std::string_view, std::string_view> take_name(std::string_view text) {
    if (!text.starts_with('"')) {
      throw bad_line("a service without a name in quotation marks");
    }
    text.remove_prefix(1);
    for (std::size_t end = text.find('"'); end != std::string_view::npos; end = text.find('"', end + 1)) {
      const std::string_view rest = text.substr(end + 1);
      if (rest.empty() || (rest.size() > 2 && rest[0] == ',' && rest[2] == ':')) {
        return {text.substr(0, end), rest.substr(rest.empty() ? 0 : 1)};
      }
    }
    throw bad_line("a service's name without the second quotation mark");
  }

  void add_transponder(std::size_t number, std::string_view reference, std::string_view parameters) {
    const auto [known, is_new] = transponders_.try_emplace(read_transponder_reference(reference),
                                                           transponder_of_line{read_transponder(parameters), number});
    if (!is_new) {
      throw bad_line(fmt::format("is the same transponder as line {}", known->second.line));
    }
  }

  void add_service(std::size_t number, std::string_view line, std::string_view name, std::string_view options) {
    guarded(number, [&] {
      const lamedb_service read = read_service_line(line);
      if (name.find('\0') != std::string_view::npos || options.find('\0') != std::string_view::npos) {
        throw bad_line("holds a NUL byte");
      }
      const auto place = made_.places.find(read.reference);
      if (place != made_.places.end()) {
        throw bad_line(fmt::format("is the same service as line {}", made_.list.services[place->second].line));
      }
      line_up_service service = broadcast_service(number);
      service.name = name;
      receive(service, read);
      if (const auto wrong = read_options(options, service, lost_)) {
        skip(number, *wrong + "; the service is kept");
      }
      made_.places[read.reference] = made_.list.services.size();
      made_.list.services.push_back(std::move(service));
    });
  }

  void receive(line_up_service &service, const lamedb_service &read) {
    const transponder_reference &reference = read.reference.transponder;
    const auto found = transponders_.find(reference);
    if (found == transponders_.end()) {
      throw bad_line(fmt::format("its transponder {:08x}:{:04x}:{:04x} is not in the file", reference.name_space,
                                 reference.transport_id, reference.network_id));
    }
    const lamedb_transponder &transponder = found->second.transponder;
    service.source = source_of(transponder.from);
    service.fields.service_id = read.reference.service_id;
    service.fields.ts_id = reference.transport_id;
    service.fields.network_id = reference.network_id;
    service.fields.frequency = transponder.frequency_khz;
    service.fields.polarisation = transponder.polarisation & 1U;
    service.fields.service_type = basic_service_type(read.service_type);
    service.further.tuned = transponder.tuned;
    count_losses(read, transponder);
  }

  void count_losses(const lamedb_service &read, const lamedb_transponder &transponder) {
    lost_.add("symbol rates and modulation");
    lost_.add("service types of newer television and radio",
              basic_service_type(read.service_type) != read.service_type ? 1 : 0);
    lost_.add("service numbers outside bouquets", read.number != 0 ? 1 : 0);
    lost_.add(circular_polarisations, transponder.polarisation > 1 ? 1 : 0);
    lost_.add("parts of a kHz", transponder.has_parts_of_a_khz ? 1 : 0);
  }

  // The next line, or nothing and no step forward.
  template <class Predicate>
  std::string_view next_unless(Predicate is_other) {
    const auto line = lines_.peek();
    if (!line || is_other(*line)) {
      return {};
    }
    return *lines_.next();
  }

  template <class Function>
  void guarded(std::size_t number, Function function) {
    try {
      function();
    } catch (const bad_line &bad) {
      skip(number, bad.reason);
    }
  }

  void skip(std::size_t number, const std::string &reason) { made_.list.skipped.push_back({number, reason}); }

  struct transponder_of_line {
    lamedb_transponder transponder;
    std::size_t line = 0;
  };

  text_lines lines_;
  loss_counts &lost_;
  lamedb_services made_;
  std::unordered_map<transponder_reference, transponder_of_line, transponder_reference::hash> transponders_;
};

constexpr std::array<const char *, 2> names_of_version_4 = {"lamedb", "lamedb5"};
constexpr std::array<const char *, 2> names_of_version_5 = {"lamedb5", "lamedb"};

line_up parse_file(const std::string &name, std::string_view text, const folder_files &files, loss_counts &lost) {
  try {
    return parse_lamedb_folder(text, files, lost);
  } catch (const std::runtime_error &error) {
    throw std::runtime_error(name + ": " + error.what());
  }
}

// A folder has one of two files, or both: the first that is there is read.
line_up read_preferred(const list_source &from, const std::array<const char *, 2> &names, loss_counts &lost) {
  if (!from.is_folder) {
    return parse_lamedb_folder(from.text, from.files, lost);
  }
  for (const char *name : names) {
    if (const auto text = from.files(name)) {
      return parse_file(name, *text, from.files, lost);
    }
  }
  throw std::runtime_error("neither lamedb nor lamedb5 is in it");
}

bool is_like_version(const fs::path &path, std::string_view beginning, std::string_view version, const char *name) {
  if (fs::is_directory(path)) {
    return fs::is_regular_file(path / name);
  }
  return version_of(text_lines(beginning).next().value_or(std::string_view())) == version;
}

}  // namespace

lamedb_services parse_lamedb(std::string_view text, loss_counts &lost) { return lamedb_reader(text, lost).read(); }

line_up parse_lamedb_folder(std::string_view text, const folder_files &files, loss_counts &lost) {
  lamedb_services services = parse_lamedb(text, lost);
  read_blacklist(files, services, lost);
  return with_bouquets(files, std::move(services), lost);
}

line_up read_lamedb(const list_source &from, loss_counts &lost) {
  return read_preferred(from, names_of_version_4, lost);
}
line_up read_lamedb5(const list_source &from, loss_counts &lost) {
  return read_preferred(from, names_of_version_5, lost);
}

bool is_like_lamedb3(const fs::path &path, std::string_view beginning) {
  return is_like_version(path, beginning, "3", "");
}

bool is_like_lamedb4(const fs::path &path, std::string_view beginning) {
  return is_like_version(path, beginning, "4", "lamedb");
}

bool is_like_lamedb5(const fs::path &path, std::string_view beginning) {
  return is_like_version(path, beginning, "5", "lamedb5");
}

}  // namespace chlist
