#pragma once
// Converts the editor's fields to a station and back. Not what its buttons do (catalogue/station_editor.h).

#include "app/forms/form1.h"
#include "app/state/station.h"

namespace catalogue {

class EditorFields {
 public:
  explicit EditorFields(app::Form1& form) : form_(form) {}

  void Show(const app::Station& station);
  /// `station` with the fields' contents; what has no field is kept.
  [[nodiscard]] app::Station Edited(app::Station station) const;

 private:
  app::Form1& form_;
};

}  // namespace catalogue
