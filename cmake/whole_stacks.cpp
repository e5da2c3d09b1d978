// Linked into programs that load GStreamer or show a real window, when the address sanitizer watches them.
// Those libraries have no frame pointers, so the stack of an allocation, by which lsan.supp knows what is
// theirs, is whole only with the slow way of unwinding. The others run three times as fast without it.

extern "C" const char* __asan_default_options() {  // NOLINT: the sanitizer's own name
  return "fast_unwind_on_malloc=0";
}
