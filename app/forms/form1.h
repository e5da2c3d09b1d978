#pragma once
// Form1: the inventory of the main window's controls, each under its own name.
// Not their behaviour, which is in one class per feature; not their widgets.

#include <array>
#include <initializer_list>

#include "app/forms/form_control.h"
#include "controls/form.h"

namespace app {

/// Constructed with its design-time captions, tooltips, ranges and places (twips inside the container named
/// in the comment).
struct Form1 {
  Form1();

  controls::Form form;  ///< the window itself, "Funkhausplayer"

  /// Every control below, with its container, key, menu entry and place in the tab order.
  Inventory inventory;

  // In the window
  controls::Frame Frame2;                             ///< main panel, shows the name of the current view
  controls::Frame Frame1;                             ///< bottom panel: editor and buttons
  std::array<controls::ProgressBar, 2> ProgressBar1;  ///< peak bars, left and right
  controls::Frame Frame3;                             ///< information panel
  controls::Label StatusLine;                         ///< below the inner area, as wide as the window

  // In Frame2
  controls::ListView SymbolListview;      ///< all stations
  controls::ListView ExplorerListFilter;  ///< the stations of one genre, or the favourites

  // In Frame1: playing
  controls::CommandButton Command1;  ///< Start
  controls::CommandButton Command6;  ///< Stop
  controls::CommandButton Command3;  ///< all titles; second action: title polling on and off
  controls::CommandButton Command2;  ///< opens a station directory
  controls::Label Label1;            ///< position and duration
  controls::Frame frSav;             ///< volume
  controls::Label lblSav;            ///< "Lautstärke", in frSav
  controls::ScrollBar hscSavVolume;  ///< volume 0 to 100, in frSav
  controls::CheckBox ckSavMute;      ///< mute, in frSav
  controls::CommandButton Command7;  ///< opens the volume mixer, in frSav

  // In Frame1: the editor
  controls::Label Label5;                     ///< "Station"
  std::array<controls::TextBox, 2> TextBox1;  ///< station name, link
  controls::Label Label6;                     ///< "Weblink"
  controls::Label Label7;                     ///< "Genre"
  controls::ComboBox Combo1;                  ///< genre
  controls::CheckBox Check2;                  ///< favourite mark
  controls::Label Label2;                     ///< "M3U-Nr.:"
  controls::UpDownTextBox UpDownTextBox1;     ///< number of the entry within a playlist link
  /// 0 applies the number, 1 everything, 2 the link, 4 the genre; 3 deletes the entry; 5 records.
  std::array<controls::CommandButton, 6> Command8;
  controls::CommandButton
      UndoDelete;  ///< brings back the entry that was deleted last; in the lists' menu only

  // In the lists' menu only, for the row that it was opened on
  controls::RowCommand RowFavourite;  ///< favourite mark
  controls::RowCommand RowRecording;  ///< starts the recording tool with the row's link
  controls::RowCommand RowLink;       ///< copies the link

  // In Frame1: views and the list
  controls::CheckBox Check1;               ///< genre view
  controls::CheckBox Check3;               ///< favourites view
  controls::CommandButton CommandButton1;  ///< saves the list
  controls::CommandButton CommandButton2;  ///< new station
  controls::CommandButton Command4;        ///< M3U export
  controls::CommandButton Command5;        ///< M3U import
  controls::CommandButton ShowGuide;       ///< opens the user's guide; by its key only
  controls::CheckBox TitleNotices;         ///< new titles as notifications; in the lists' menu only

  // In Frame3
  controls::Image Image1;                ///< station picture; the labels' texts flow around it
  controls::Label Label4;                ///< the title being played
  controls::Label Label3;                ///< what the stream says about itself
  controls::CommandButton CmdInfoClose;  ///< closes the panel

  controls::Timer tmPlay;     ///< position, every 500 ms
  controls::Timer Timer1;     ///< peak bars, every 20 ms
  controls::Timer Timer2;     ///< title, every 5000 ms
  controls::Timer tmUnsaved;  ///< unsaved rows are kept, once after a change

 private:
  void Add(std::initializer_list<FormControl> more);
  void MakeLists();
  void ShareColumnWidths(controls::ListView& dragged, controls::ListView& other);
  void MakePlaying();
  void MakeVolume();
  void MakeEditor();
  void MakeEditorButtons();
  void MakeRowCommands();
  void MakeViews();
  void MakeInformation();

  controls::Subscriptions subscriptions_;
};

}  // namespace app
