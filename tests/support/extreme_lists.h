// The channel lists that functions are called on at their extremes, each made from an initialised, empty one.
#pragma once

namespace extremes {

void make_nothing();

// Three providers and favourite groups, one of them with a name that fills its field; six services with the identity
// that the base value 1 names, in eight views, and a history.
void make_small();

// The largest list, with the base value's identity on its first transponder.
void make_full();

// A small list that was destroyed and not initialised again.
void make_destroyed();

}  // namespace extremes
