// Another identity for a service.
#pragma once

#include <channel/records.h>

#include "channel/identity.h"

namespace chlist {

// Files the service under the identity's network and transponder, which are made when they are not there; its entries
// follow. A service that stays on its transponder keeps its place there. Throws when the identity belongs to another
// service.
void change_identity(channel_st &service, const channel::identity &wanted);

}  // namespace chlist
