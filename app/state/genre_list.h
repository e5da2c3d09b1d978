#pragma once
// The built-in genres. Not the genres that stations really carry, which are free text.

#include "ports/text.h"

namespace app {

/// 17 entries separated by ";" only; "Dance" occurs twice and "Electro,Black Music" is one entry.
inline constexpr platform::TextView GenreList =
    u"80er/90er;Pop & Hits;Rock;Oldies;Schlager & Disco;Country;Dance;Electro,Black Music;Klassik;"
    u"Volksmusik;Jazz & Blues;Gothic;Dance;Techno & House;Nachrichten & Kultur;Kinder;Sonstiges";

}  // namespace app
