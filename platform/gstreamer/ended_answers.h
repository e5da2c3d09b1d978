#pragma once
// Makes it safe to close what is left of a web server's answer that was cancelled as it arrived.
// Not the closing of a pipeline (platform/gstreamer/pipeline.h).

namespace platform::gstreamer {

/// When a request is cancelled between the arrival of its answer and the delivery to its source, libsoup 3.2
/// ends the exchange first and then closes the answer's body, which looks for the exchange and crashes. That
/// happens in libsoup's own thread, whenever something is closed at that moment: most often a list of
/// segments, which asks for a file every few seconds. From this call on, closing the body of an answer that
/// has ended does nothing, as it is in later versions.
///
/// To be called once an element for http exists, because the library is loaded with it. Applies to the whole
/// process; repeating it does no harm. From any thread. Without libsoup 3 it does nothing.
void AllowClosingEndedAnswers();

}  // namespace platform::gstreamer
