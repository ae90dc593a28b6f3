// What the tool tells its caller.
#pragma once

namespace chlist {

enum exit_code {
  exit_done = 0,
  exit_findings = 1,  // done, with something to report
  exit_failed = 2     // nothing was done, or its report could not be written
};

}  // namespace chlist
