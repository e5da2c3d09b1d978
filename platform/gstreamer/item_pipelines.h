#pragma once
// The pipelines of one item, opened, exchanged and dropped, with their common volume.
// Not the decisions when (item_phases.h), and not the thread (media_supervisor.h).

#include <cstdint>
#include <memory>

#include "platform/gstreamer/item_services.h"
#include "platform/gstreamer/item_state.h"
#include "platform/gstreamer/line.h"

namespace platform::gstreamer {

/// At most one that is heard and one that is attempted. Belongs to one thread, the supervisor's.
class ItemPipelines {
 public:
  using Clock = Line::Clock;

  ItemPipelines(PipelineInput input, std::shared_ptr<ItemState> state,
                std::shared_ptr<ItemServices> services);

  Line& Heard() { return heard_; }
  [[nodiscard]] const Line& Heard() const { return heard_; }
  Attempt& Attempted() { return attempt_; }
  [[nodiscard]] const Attempt& Attempted() const { return attempt_; }
  [[nodiscard]] bool IsHeard(const PipelineEvent& event) const;
  [[nodiscard]] bool IsAttempted(const PipelineEvent& event) const;

  enum class Silence : std::uint8_t { kAsItIs, kExplained };
  /// Begins an attempt at `now`; false when the pipeline cannot be built. With kExplained a server that gives
  /// no answer is asked for the reason.
  bool Open(OutputChooser::Output output, Clock::time_point now, Silence silence);
  void DropAttempt();
  /// The attempt becomes what is heard; nothing was heard before. True when its source is already gone.
  bool Promote();
  void DropHeard();
  struct Both {
    std::shared_ptr<Pipeline> heard;
    std::shared_ptr<Pipeline> attempted;
  };
  /// Both are no longer the item's; to be passed to StopBoth.
  Both TakeBoth();
  /// A sink whose device is gone repeats an old volume, which is not read then.
  enum class Mixer : std::uint8_t { kAnswers, kIsGone };
  void StopBoth(const Both& both, Mixer mixer);

  enum class Sound : std::uint8_t { kOff, kOn };
  /// Plays or pauses what is heard; with kOn it still waits for its buffer.
  void Turn(Sound sound);
  /// The mixer has changed the volume of what is heard.
  void MixerMoved() { mixer_moved_ = true; }
  /// Passes the program's volume on to the pipelines and the mixer's on to the program.
  void FollowVolume();

 private:
  void StopHeard(const std::shared_ptr<Pipeline>& heard, Mixer mixer);
  void ObserveMixer(const std::shared_ptr<Pipeline>& heard);

  const PipelineInput input_;
  const std::shared_ptr<ItemState> state_;
  const std::shared_ptr<ItemServices> services_;
  Line heard_;
  Attempt attempt_;
  int serial_ = 0;
  std::uint64_t volume_version_ = 0;
  bool mixer_moved_ = false;
};

}  // namespace platform::gstreamer
