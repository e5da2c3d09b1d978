#include "platform/curl/library.h"

#include <dlfcn.h>

namespace platform::curl {
namespace {

/// The name of its binary interface, which every version that has the declared functions keeps.
constexpr char kFile[] = "libcurl.so.4";

/// Kept until the process ends: what the library has set up cannot all be undone.
class Loader {
 public:
  Loader() : file_(::dlopen(kFile, RTLD_NOW | RTLD_LOCAL)) {
    if (file_ == nullptr) return;
    decltype(&curl_global_init) global_init = nullptr;
    complete_ = Find(global_init, "curl_global_init") && Find(global_cleanup_, "curl_global_cleanup") &&
                FindAll() && global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
  }
  ~Loader() {
    if (complete_) global_cleanup_();
  }
  Loader(const Loader&) = delete;
  Loader& operator=(const Loader&) = delete;

  [[nodiscard]] const Library* Get() const { return complete_ ? &library_ : nullptr; }

 private:
  template <typename Function>
  bool Find(Function& function, const char* name) {
    function = reinterpret_cast<Function>(::dlsym(file_, name));  // NOLINT: what dlsym is made for
    return function != nullptr;
  }

  bool FindAll() {
    Library& to = library_;
    return Find(to.easy_cleanup, "curl_easy_cleanup") && Find(to.easy_getinfo, "curl_easy_getinfo") &&
           Find(to.easy_init, "curl_easy_init") && Find(to.easy_pause, "curl_easy_pause") &&
           Find(to.easy_setopt, "curl_easy_setopt") && Find(to.multi_add_handle, "curl_multi_add_handle") &&
           Find(to.multi_cleanup, "curl_multi_cleanup") && Find(to.multi_info_read, "curl_multi_info_read") &&
           Find(to.multi_init, "curl_multi_init") && Find(to.multi_perform, "curl_multi_perform") &&
           Find(to.multi_poll, "curl_multi_poll") &&
           Find(to.multi_remove_handle, "curl_multi_remove_handle") &&
           Find(to.slist_append, "curl_slist_append") && Find(to.slist_free_all, "curl_slist_free_all");
  }

  void* file_;
  Library library_;
  decltype(&curl_global_cleanup) global_cleanup_ = nullptr;
  bool complete_ = false;
};

}  // namespace

const Library* LoadedLibrary() {
  static const Loader loader;
  return loader.Get();
}

}  // namespace platform::curl
