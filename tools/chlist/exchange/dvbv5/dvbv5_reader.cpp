// From the text of the DVBv5 format to a line-up.
#include <optional>
#include <string>
#include <utility>

#include "chlist/exchange/dvbv5/dvbv5.h"
#include "chlist/exchange/dvbv5/dvbv5_section.h"
#include "chlist/exchange/dvbv5/dvbv5_words.h"
#include "chlist/exchange/field_reading.h"
#include "chlist/exchange/text_lines.h"

namespace chlist {
namespace {

// Sections end where the next one begins, so a service is made one section late.
class section_reader {
 public:
  explicit section_reader(loss_counts &lost) : lost_(lost) {}

  void read_line(std::size_t number, std::string_view text) {
    const std::string_view line = without_blanks_around(text);
    if (is_blank_or_comment(line)) {
      return;
    }
    try {
      if (line.front() == '[') {
        begin_section(number, line);
      } else {
        read_setting(line);
      }
    } catch (const bad_line &bad) {
      skip(number, bad.reason);
    }
  }

  line_up take() {
    end_section();
    return std::move(made_);
  }

 private:
  // A section that cannot be read takes its lines with it.
  void begin_section(std::size_t number, std::string_view line) {
    end_section();
    is_within_section_ = true;
    const std::size_t end = line.rfind(']');
    if (end == std::string_view::npos) {
      throw bad_line("a section without ']'");
    }
    if (line.find('\0') != std::string_view::npos) {
      throw bad_line("holds a NUL byte");
    }
    section_.emplace(number, without_leading_blanks(line.substr(1, end - 1)));
    section_line_ = number;
  }

  void read_setting(std::string_view line) {
    if (!is_within_section_) {
      throw bad_line("stands before the first section");
    }
    if (!section_) {
      return;
    }
    try {
      section_->take(line);
    } catch (const bad_line &bad) {
      if (!dvbv5_section::is_essential(line)) {
        throw;
      }
      section_.reset();
      throw bad_line(bad.reason + "; the service is left out");
    }
  }

  void end_section() {
    if (!section_) {
      return;
    }
    const dvbv5_section section = *std::exchange(section_, std::nullopt);
    try {
      made_.services.push_back(section.service());
      section.count_losses(lost_);
    } catch (const bad_line &bad) {
      skip(section_line_, bad.reason);
    }
  }

  void skip(std::size_t number, const std::string &reason) { made_.skipped.push_back({number, reason}); }

  loss_counts &lost_;
  line_up made_;
  std::optional<dvbv5_section> section_;
  std::size_t section_line_ = 0;
  bool is_within_section_ = false;
};

}  // namespace

line_up parse_dvbv5(std::string_view text, loss_counts &lost) {
  section_reader made(lost);
  text_lines lines(text);
  while (const auto line = lines.next()) {
    made.read_line(lines.number(), *line);
  }
  return made.take();
}

line_up read_dvbv5(const list_source &from, loss_counts &lost) { return parse_dvbv5(from.text, lost); }

bool is_like_dvbv5(const std::filesystem::path & /*path*/, std::string_view beginning) {
  text_lines lines(beginning);
  while (const auto line = lines.next()) {
    const std::string_view text = without_blanks_around(*line);
    if (!is_blank_or_comment(text)) {
      return text.front() == '[' && text.back() == ']';
    }
  }
  return false;
}

}  // namespace chlist
