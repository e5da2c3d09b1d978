#pragma once
// libcurl, loaded when it is first needed: with the libraries that it needs itself (for TLS, LDAP, Kerberos
// ...) it would take as long at the start of the program as everything else that is linked. Not for using it
// (transfer.h).

#include <curl/curl.h>

namespace platform::curl {

/// The functions that the adapter uses, under their names without "curl_".
struct Library {
  decltype(&curl_easy_cleanup) easy_cleanup = nullptr;
  decltype(&curl_easy_getinfo) easy_getinfo = nullptr;
  decltype(&curl_easy_init) easy_init = nullptr;
  decltype(&curl_easy_pause) easy_pause = nullptr;
  decltype(&curl_easy_setopt) easy_setopt = nullptr;
  decltype(&curl_multi_add_handle) multi_add_handle = nullptr;
  decltype(&curl_multi_cleanup) multi_cleanup = nullptr;
  decltype(&curl_multi_info_read) multi_info_read = nullptr;
  decltype(&curl_multi_init) multi_init = nullptr;
  decltype(&curl_multi_perform) multi_perform = nullptr;
  decltype(&curl_multi_poll) multi_poll = nullptr;
  decltype(&curl_multi_remove_handle) multi_remove_handle = nullptr;
  decltype(&curl_slist_append) slist_append = nullptr;
  decltype(&curl_slist_free_all) slist_free_all = nullptr;
};

/// Loads the library and sets it up on the first call, which takes some milliseconds; null when that is not
/// possible. From any thread.
[[nodiscard]] const Library* LoadedLibrary();

}  // namespace platform::curl
