#include "platform/gstreamer/ended_answers.h"

#include <dlfcn.h>
#include <gio/gio.h>

#include <atomic>
#include <mutex>

namespace platform::gstreamer {
namespace {

using Close = gboolean (*)(GInputStream*, GCancellable*, GError**);

constexpr char kLibrary[] = "libsoup-3.0.so.0";
/// The body of an answer, and its property that names the message it belongs to.
constexpr char kBodyType[] = "SoupClientInputStream";
constexpr char kMessage[] = "message";

/// The body's own function. One for the process, because a class of streams has one.
std::atomic<Close> own_close{nullptr};

GQuark EndedMark() {
  static const GQuark mark = g_quark_from_static_string("funkhaus-answer-ended");
  return mark;
}

gboolean CloseUnlessEnded(GInputStream* body, GCancellable* cancellable, GError** error) {
  GObject* message = nullptr;
  g_object_get(body, kMessage, &message, nullptr);
  const bool ended = message != nullptr && g_object_get_qdata(message, EndedMark()) != nullptr;
  g_clear_object(&message);
  return ended ? TRUE : own_close.load()(body, cancellable, error);
}

/// The library makes its class with the first body, so there is none to look for any earlier.
void ReplaceClose() {
  static std::mutex one_at_a_time;
  const std::lock_guard lock(one_at_a_time);
  if (own_close.load() != nullptr) return;
  const GType type = g_type_from_name(kBodyType);
  gpointer const kind = type == 0 ? nullptr : g_type_class_peek(type);
  if (kind == nullptr || g_object_class_find_property(G_OBJECT_CLASS(kind), kMessage) == nullptr) return;
  GInputStreamClass* const stream = G_INPUT_STREAM_CLASS(kind);
  own_close = stream->close_fn;
  std::atomic_ref<Close>(stream->close_fn).store(CloseUnlessEnded);
}

/// An exchange ends in the thread that closes the body, before it does.
gboolean OnEnded(GSignalInvocationHint*, guint, const GValue* values, gpointer) {
  g_object_set_qdata(G_OBJECT(g_value_get_object(values)), EndedMark(), GINT_TO_POINTER(TRUE));
  ReplaceClose();
  return TRUE;
}

/// A message can be sent again, for the rest of a file.
gboolean OnSent(GSignalInvocationHint*, guint, const GValue* values, gpointer) {
  g_object_set_qdata(G_OBJECT(g_value_get_object(values)), EndedMark(), nullptr);
  return TRUE;
}

void HookMessages() {
  void* const library = dlopen(kLibrary, RTLD_LAZY | RTLD_NOLOAD);
  if (library == nullptr) return;
  const auto message_type = reinterpret_cast<GType (*)()>(dlsym(library, "soup_message_get_type"));
  if (message_type == nullptr) return;
  // The signals exist with the class, which lasts as long as the process.
  g_type_class_ref(message_type());
  const guint ended = g_signal_lookup("finished", message_type());
  const guint sent = g_signal_lookup("starting", message_type());
  if (ended == 0 || sent == 0) return;
  g_signal_add_emission_hook(sent, 0, OnSent, nullptr, nullptr);
  g_signal_add_emission_hook(ended, 0, OnEnded, nullptr, nullptr);
}

}  // namespace

void AllowClosingEndedAnswers() {
  static std::once_flag once;
  std::call_once(once, HookMessages);
}

}  // namespace platform::gstreamer
