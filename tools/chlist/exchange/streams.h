// The components of a service as formats write them: what is kept beside the list, and the PIDs of the list itself.
#pragma once

#include <string>
#include <vector>

#include "chlist/line_up/line_up.h"

namespace chlist {

// The list's word on a PID holds: the first stream of its kind that is kept stands for it, unless another one has it.
// The streams with those of the list in front of their kinds; one that is known by its PID alone is audio, or video.
std::vector<elementary_stream> streams_of(const line_up_service &service);

// Empty when it is not known.
std::string value_of(const further_facts &facts, tuning_parameter parameter);

}  // namespace chlist
