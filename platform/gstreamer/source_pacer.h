#pragma once
// Makes a pipeline's source read from its connection as gathering.h says. Not the decision.

#include <gst/gst.h>

#include <condition_variable>
#include <functional>
#include <mutex>

#include "platform/gstreamer/gathering.h"

namespace platform::gstreamer {

/// Attach, then Release before the pipeline is stopped. Outlives the pipeline.
class SourcePacer {
 public:
  explicit SourcePacer(Gathering::Clock::duration pause = Gathering::kPause) : gathering_(pause) {}
  SourcePacer(const SourcePacer&) = delete;
  SourcePacer& operator=(const SourcePacer&) = delete;

  using Buffered = std::function<Gathering::Clock::duration()>;

  /// `buffered` says how much sound there is; called from the source's thread.
  void Attach(GstElement* source, Buffered buffered);

  /// Ends a wait and has the source read without any from now on. From any thread.
  void Release();

 private:
  GstPadProbeReturn OnPiece();

  Buffered buffered_;
  Gathering gathering_;
  std::mutex mutex_;
  std::condition_variable released_changed_;
  bool released_ = false;
};

}  // namespace platform::gstreamer
