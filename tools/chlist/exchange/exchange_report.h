// What imports and exports say of what did not come through, as text and as JSON.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/exchange/list_builder.h"
#include "chlist/exchange/loss_counts.h"
#include "chlist/json/json.h"

namespace chlist {

// On standard error, a line for each; of those that are skipped for one reason the first ten, or all.
void report_skipped(const std::filesystem::path &input, const std::vector<skipped_line> &skipped, bool shows_all);
void report_left_out(const std::filesystem::path &input, const loss_counts &lost);

// What a list had no room for: the tables, and the groups of each kind by name, the first ten or all.
void report_full_tables(const std::filesystem::path &input, const filled_list &filled, bool shows_all);

// What has no place on the other side, one line for each kind, below a title.
std::string losses_text(const loss_counts &lost, std::string_view title);

// "2 services (1 TV, 1 radio, 0 other) of 1 provider on 1 transponder of 1 source".
std::string text_of(const list_counts &counts);

// What was done: on standard output, or on standard error where that is what the list went to.
void print_summary(const std::filesystem::path &output, std::string_view text);

// Throws when the report and the list would both go to standard output.
void must_leave_room_for_report(const std::filesystem::path &output, bool as_json);

json json_of(const list_counts &counts);
// All that did not come through.
json json_of_remains(const filled_list &filled, const loss_counts &lost);
json json_of_skipped(const std::vector<skipped_line> &skipped);
json json_of_losses(const loss_counts &lost);
json json_of_groups_left_out(const std::vector<group_left_out> &groups);
json json_of_left_out(const loss_counts &lost);

}  // namespace chlist
