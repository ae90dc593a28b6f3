// Identities as text: fields between colons.
#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <iterator>

#include "chlist/line_up/polarisation.h"
#include "chlist/line_up/selection.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

// Takes numbers and letters off the front of a text. Once something is not there, nothing more is.
class text_reader {
 public:
  explicit text_reader(std::string_view text) : text_(text) {}

  template <class Number>
  Number number() {
    Number value{};
    const char *end = text_.data() + text_.size();
    const auto [stop, error] = std::from_chars(text_.data(), end, value);
    is_good_ = is_good_ && error == std::errc();
    text_ = {stop, static_cast<std::size_t>(end - stop)};
    return value;
  }

  void colon() { is_good_ = accept(':') && is_good_; }

  // A V may have the number of a polarisation that has no letter behind it.
  std::uint8_t polarisation() {
    const std::string_view letter = text_.substr(0, 1);
    const auto *const named = std::ranges::find_if(
        filed_polarisations, [=](const filed_polarisation &each) { return is_same_name(each.text, letter); });
    is_good_ = is_good_ && named != std::end(filed_polarisations);
    if (!is_good_) {
      return 0;
    }
    text_.remove_prefix(letter.size());
    return named->text == "V" && !text_.starts_with(':') ? number<std::uint8_t>() : named->polarisation;
  }

  [[nodiscard]] bool is_complete() const { return is_good_ && text_.empty(); }

 private:
  bool accept(char letter) {
    const bool is_there = text_.starts_with(letter);
    text_.remove_prefix(is_there ? 1 : 0);
    return is_there;
  }

  std::string_view text_;
  bool is_good_ = true;
};

}  // namespace

std::optional<channel::identity> read_identity(std::string_view text) {
  text_reader reader(text);
  channel::identity id = {};
  id.net_index = reader.number<std::uint8_t>();
  reader.colon();
  id.network_id = reader.number<std::uint16_t>();
  reader.colon();
  id.ts_id = reader.number<std::uint16_t>();
  reader.colon();
  id.frequency = reader.number<std::uint32_t>();
  id.polarisation = reader.polarisation();
  reader.colon();
  id.service_id = reader.number<std::uint16_t>();
  return reader.is_complete() ? std::optional(id) : std::nullopt;
}

std::string identity_text(const channel::identity &id) {
  return fmt::format("{}:{}:{}:{}{}{}:{}", id.net_index, id.network_id, id.ts_id, id.frequency,
                     id.polarisation == 0 ? 'H' : 'V', id.polarisation > 1 ? std::to_string(id.polarisation) : "",
                     id.service_id);
}

}  // namespace chlist
