#pragma once
// RecordForm: the inventory of the recording tool's window. Not its behaviour, not its widgets.

#include "app/forms/form_control.h"
#include "controls/form.h"

namespace app {

/// Constructed with its captions, tooltips and places (twips).
struct RecordForm {
  RecordForm();

  controls::Form form;  ///< "OZRecordFunkhaus"

  controls::Label address_label;        ///< "Adresse:"
  controls::TextBox address;            ///< the station's link
  controls::CommandButton start;        ///< begin to record that address
  controls::Label station_label;        ///< "Sender:"
  controls::Label station;              ///< the station's name
  controls::Label title_label;          ///< "Titel:"
  controls::Label title;                ///< the current title
  controls::Label time_label;           ///< "Zeit:"
  controls::Label time;                 ///< for how long bytes have been arriving
  controls::Label written_label;        ///< "Geschrieben:"
  controls::Label written;              ///< bytes and files
  controls::Label state;                ///< what the recording is doing
  controls::CommandButton stop;         ///< end the recording
  controls::CommandButton open_folder;  ///< show the folder of the recordings
  controls::CommandButton show_guide;   ///< opens the user's guide; by its key only

  /// Every control above, with its key and place in the tab order.
  Inventory inventory;
};

}  // namespace app
