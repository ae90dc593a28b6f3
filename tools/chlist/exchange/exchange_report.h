// What imports and exports say of what did not come through, as text and as JSON.
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

#include "chlist/exchange/loss_counts.h"
#include "chlist/report.h"

namespace chlist {

// On standard error, a line for each; of those that are skipped for one reason the first ten, or all.
void report_skipped(const std::filesystem::path &input, const std::vector<skipped_line> &skipped, bool shows_all);
void report_left_out(const std::filesystem::path &input, const loss_counts &lost);

// On standard output: what has no place on the other side, one line for each kind, below a title.
void print_losses(const loss_counts &lost, std::string_view title);

json json_of_skipped(const std::vector<skipped_line> &skipped);
json json_of_losses(const loss_counts &lost);
json json_of_left_out(const loss_counts &lost);

}  // namespace chlist
