#pragma once
// A private PulseAudio server with a null sink, so that a test can hear and look at the mixer.
// Not the user's sound server, which is never touched.

#include <optional>
#include <string>

#include "tests/support/child_process.h"
#include "tests/support/temp_folder.h"

namespace test_support {

class PulseServer {
 public:
  /// Starts the server and waits until it answers; throws when it does not.
  PulseServer();

  /// The address for PULSE_SERVER.
  [[nodiscard]] const std::string& Address() const { return address_; }
  [[nodiscard]] ChildProcess::Environment Variables() const;

  /// From now on this process plays on this server (PULSE_SERVER).
  void UseInThisProcess() const;

  /// What the mixer says about the one stream of `application`; nothing while there is no such stream.
  struct Stream {
    int volume_percent = 0;  ///< on the mixer's own scale
    double decibels = 0;     ///< 0 at full volume
    bool mute = false;
    bool corked = false;  ///< paused
    int channels = 0;
  };
  [[nodiscard]] std::optional<Stream> FindStream(const std::string& application) const;
  /// Moves the slider of the application's stream, as a user does in the mixer.
  void MoveSlider(const std::string& application, int percent) const;
  void Mute(const std::string& application, bool mute) const;

  /// A second card is plugged in and becomes the default; the first one is still there.
  void PlugIn();
  /// The second card is pulled out.
  void Unplug();
  /// From now on streams of a card that is pulled out move to another one, as desktops have it.
  void RescueStreams() const;

  /// The first card, to which Loudness listens, disappears and comes back; its listeners end when it
  /// disappears.
  void TakeCardAway() const;
  void GiveCardBack() const;
  /// The card takes no sound, and takes it again.
  void Suspend(bool suspend) const;
  /// The server ends the application's stream.
  void KillStream(const std::string& application) const;
  /// Streams move to the card.
  void MakeDefault(const std::string& card) const;

  /// From the next Start on the server remembers the volume of each application, as desktops have it.
  void RememberVolumes() { remembers_volumes_ = true; }

  void Stop() { server_.Stop(); }
  /// Sends the server a signal, such as SIGSTOP and SIGCONT to freeze it.
  void Signal(int signal) const { server_.Signal(signal); }
  void Start();

 private:
  [[nodiscard]] std::string ListStreams() const;
  [[nodiscard]] std::string NumberOf(const std::string& application) const;
  /// pactl's answer; throws when it refuses.
  std::string Control(ChildProcess::Arguments arguments) const;
  TempFolder folder_;
  std::string address_;
  std::string plugged_in_;  ///< the second card's number of its module
  bool remembers_volumes_ = false;
  ChildProcess server_;
};

}  // namespace test_support
