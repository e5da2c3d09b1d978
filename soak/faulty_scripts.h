#pragma once
// What faulty radio servers answer: one script per kind of fault, for the soak. Not a server, and not a test.

#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/icy_script.h"

namespace soak {

/// What the answers refer to.
struct Surroundings {
  std::string music;                   ///< bytes of an MP3 file
  std::string good;                    ///< the address of a station that plays
  std::string dead;                    ///< an address where nobody listens
  std::vector<std::string> addresses;  ///< of all faulty targets
};

/// An answer of a kind that chance chooses: cuts, stalls, trickles, redirects (also in circles), errors,
/// nonsense, playlists that lead nowhere. About every fourth plays, at least for a while.
test_support::Script FaultyScript(const Surroundings& around, std::mt19937& random);

}  // namespace soak
