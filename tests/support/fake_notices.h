#pragma once
// Keeps what a feature said in the status line. Not the status line: nothing is translated or filled in.

#include <vector>

#include "app/state/notices.h"

namespace test_support {

class FakeNotices final : public app::Notices {
 public:
  struct Notice {
    app::Text sentence;
    std::vector<app::Text> arguments;
    friend bool operator==(const Notice&, const Notice&) = default;
  };

  using Notices::Notify;
  void Notify(app::TextView sentence, const std::vector<app::Text>& arguments) override {
    notices.push_back({app::Text(sentence), arguments});
  }

  std::vector<Notice> notices;
};

}  // namespace test_support
