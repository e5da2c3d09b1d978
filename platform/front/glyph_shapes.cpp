#include "platform/front/glyph_shapes.h"

#include <utility>

namespace platform::front {
namespace {

using Kind = GlyphPart::Kind;
using Parts = std::vector<GlyphPart>;
using Points = std::vector<GlyphPoint>;

/// Lines in the open make a shape that is read by its ends; those that enclose something read well thinner.
constexpr double kOpen = 2.0;
constexpr double kFine = 1.3;

GlyphPart Line(Points points, double width = 1.5) { return {Kind::kLine, std::move(points), width}; }
GlyphPart Outline(Points points, double width = 1.5) { return {Kind::kOutline, std::move(points), width}; }
GlyphPart Area(Points points) { return {Kind::kArea, std::move(points)}; }
GlyphPart Disc(GlyphPoint middle, double radius) { return {Kind::kDisc, {middle}, 0.0, {radius, radius}}; }
GlyphPart Circle(GlyphPoint middle, double radius) {
  return {Kind::kCircle, {middle}, 1.5, {radius, radius}};
}
GlyphPart SoundWave(GlyphPoint middle, GlyphPoint radius) {
  return {Kind::kArc, {middle}, 1.4, radius, 55.0};
}

Parts Loudspeaker() {
  return {Area({{1.5, 6}, {4, 6}, {8, 2.5}, {8, 13.5}, {4, 10}, {1.5, 10}}), SoundWave({9, 8}, {2.5, 3}),
          SoundWave({10.25, 8}, {4.25, 5.5})};
}

/// The board with its clip, and a sheet that lies over its corner.
Parts Clipboard() {
  return {Line({{5.5, 13.5}, {1.8, 13.5}, {1.8, 2.8}, {11.2, 2.8}, {11.2, 5}}, kFine),
          Area({{4.2, 1.2}, {8.8, 1.2}, {8.8, 4.2}, {4.2, 4.2}}),
          Outline({{7, 6.5}, {14.3, 6.5}, {14.3, 15}, {7, 15}}, kFine), Line({{9, 9.2}, {12.3, 9.2}}, kFine),
          Line({{9, 12}, {12.3, 12}}, kFine)};
}

/// A triangle that points on.
Parts Start() {
  const Points corners = {{4.5, 3}, {12.5, 8}, {4.5, 13}};
  return {Area(corners), Outline(corners)};
}

Parts Bin() {
  return {Line({{2.5, 4}, {13.5, 4}}), Line({{6, 4}, {6, 2}, {10, 2}, {10, 4}}),
          Line({{3.8, 4}, {4.6, 14}, {11.4, 14}, {12.2, 4}}), Line({{6.6, 6.8}, {6.6, 11.4}}),
          Line({{9.4, 6.8}, {9.4, 11.4}})};
}

/// A disk with its label and its shutter.
Parts Disk() {
  return {Outline({{2.5, 2.5}, {11, 2.5}, {13.5, 5}, {13.5, 13.5}, {2.5, 13.5}}),
          Line({{5, 13.5}, {5, 9}, {11, 9}, {11, 13.5}}),
          Line({{5.5, 2.5}, {5.5, 5.5}, {9.5, 5.5}, {9.5, 2.5}})};
}

/// A tray with an arrow into it or out of it.
Parts Tray(controls::Glyph glyph) {
  const bool in = glyph == controls::Glyph::kImport;
  const double tip = in ? 10 : 2;
  const double ends = in ? 6.8 : 5.2;
  return {Line({{2.5, 10}, {2.5, 13.5}, {13.5, 13.5}, {13.5, 10}}), Line({{8, 2}, {8, 10}}),
          Line({{4.8, ends}, {8, tip}, {11.2, ends}})};
}

Parts List() {
  Parts parts;
  for (const double line : {3.5, 8.0, 12.5}) {
    parts.push_back(Disc({2.5, line}, 0.75));
    parts.push_back(Line({{6, line}, {14, line}}));
  }
  return parts;
}

}  // namespace

std::vector<GlyphPart> PartsOf(controls::Glyph glyph) {
  using controls::Glyph;
  switch (glyph) {
    case Glyph::kNone:
      return {};
    case Glyph::kCheckMark:
      return {Line({{2.5, 8.5}, {6.5, 12.5}, {13.5, 3.5}}, kOpen)};
    case Glyph::kLoudspeaker:
      return Loudspeaker();
    case Glyph::kClose:
      return {Line({{3.5, 3.5}, {12.5, 12.5}}, kOpen), Line({{12.5, 3.5}, {3.5, 12.5}}, kOpen)};
    case Glyph::kPaste:
      return Clipboard();
    case Glyph::kStart:
      return Start();
    case Glyph::kStop:
      return {Area({{3, 3}, {13, 3}, {13, 13}, {3, 13}})};
    case Glyph::kRecord:
      return {Disc({8, 8}, 5.5)};
    case Glyph::kAdd:
      return {Line({{8, 2.5}, {8, 13.5}}, kOpen), Line({{2.5, 8}, {13.5, 8}}, kOpen)};
    case Glyph::kDelete:
      return Bin();
    case Glyph::kSave:
      return Disk();
    case Glyph::kImport:
    case Glyph::kExport:
      return Tray(glyph);
    case Glyph::kFind:
      return {Circle({6.7, 6.7}, 4.4), Line({{10, 10}, {13.8, 13.8}})};
    case Glyph::kList:
      return List();
    case Glyph::kFolder:
      return {Outline({{2, 13}, {2, 3.2}, {6.2, 3.2}, {7.8, 5}, {14, 5}, {14, 13}}),
              Line({{2, 7.5}, {14, 7.5}})};
  }
  return {};
}

}  // namespace platform::front
