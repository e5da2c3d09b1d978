#pragma once
// The editor's fields as a station, both ways. Not what its buttons do (catalogue/station_editor.h).

#include "app/forms/form1.h"
#include "app/state/station.h"

namespace catalogue {

class EditorFields {
 public:
  explicit EditorFields(app::Form1& form) : form_(form) {}

  void Show(const app::Station& station);
  /// `station` as the fields have it; what has no field stays.
  [[nodiscard]] app::Station Edited(app::Station station) const;

 private:
  app::Form1& form_;
};

}  // namespace catalogue
