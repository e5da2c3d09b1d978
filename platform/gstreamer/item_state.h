#pragma once
// What the two threads of an item share: the caller's requests, the pipeline's events, and the current state.
// Not the decisions; those are media_supervisor.h.

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/gstreamer/heard_time.h"
#include "platform/gstreamer/item_phases.h"
#include "platform/gstreamer/item_report.h"
#include "platform/gstreamer/metadata.h"
#include "platform/gstreamer/pipeline.h"

namespace platform::gstreamer {

/// Safe to use from any thread. The lock is only ever held for a few assignments.
class ItemState final : public PipelineListener {
 public:
  using Clock = std::chrono::steady_clock;

  // Pipeline's threads.
  void OnPipelineEvent(const PipelineEvent& event) override;
  void OnTags(const GstTagList& tags) override;

  // Caller's side.
  void Request(Wanted wanted);
  /// Wakes the supervisor after a change of the process's volume.
  void Wake();
  [[nodiscard]] Wanted Requested() const;
  /// True once the last request was carried out; waits for that at most `limit`.
  bool WaitCarriedOut(std::chrono::milliseconds limit);
  /// The result of opening; nothing when it has not finished after `limit`.
  std::optional<HResult> WaitOpened(std::chrono::milliseconds limit);
  /// A running item whose end was heard has ended.
  [[nodiscard]] bool Ended() const;
  /// Nanoseconds played since the last start from the beginning; never runs backwards meanwhile.
  std::int64_t PlayedTime();
  [[nodiscard]] std::int64_t Duration() const;
  [[nodiscard]] std::shared_ptr<Pipeline> Current() const;
  /// A snapshot, with the present format.
  [[nodiscard]] Properties GetProperties() const;
  /// The current state; what is stopped or shut down counts as stopped at once, unless it had failed.
  [[nodiscard]] PlaybackStatus Status() const;
  /// False until the supervisor has made its first report.
  [[nodiscard]] bool HasReport() const;
  /// The channel count, also of the last pipeline while there is none.
  [[nodiscard]] int Channels() const;

  // Supervisor's side.
  struct Work {
    std::vector<PipelineEvent> events;
    bool stop_first = false;  ///< Stop was requested, and then `wanted`
    Wanted wanted = Wanted::kOpened;
    std::uint64_t request = 0;
  };
  /// Waits for an event, a request or a wake, at most until `until`.
  Work WaitForWork(std::optional<Clock::time_point> until);
  void CarriedOut(std::uint64_t request);
  void SetOpened(HResult result, const ItemReport& report);
  void SetReport(const ItemReport& report);
  /// The item has ended, after `request` was carried out; a newer request may start it again.
  void SetEnded(std::uint64_t request);
  void SetDuration(std::int64_t nanoseconds);
  /// Makes `pipeline` (or none) the one that is heard; the time played continues with it.
  void SetCurrent(std::shared_ptr<Pipeline> pipeline);
  void RestartTime();

 private:
  mutable std::mutex mutex_;
  std::condition_variable supervisor_wakes_;
  std::condition_variable caller_wakes_;
  std::vector<PipelineEvent> events_;
  Wanted wanted_ = Wanted::kOpened;
  std::uint64_t request_ = 0;
  std::uint64_t carried_out_ = 0;
  bool woken_ = false;
  bool stop_first_ = false;
  std::optional<HResult> opened_;
  bool ended_ = false;
  std::int64_t duration_ = 0;
  HeardTime heard_time_;
  std::shared_ptr<Pipeline> current_;
  int last_channels_ = 0;
  int last_sample_rate_ = 0;
  Properties properties_;
  ItemReport report_;
  bool has_report_ = false;
};

}  // namespace platform::gstreamer
