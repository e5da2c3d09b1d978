#pragma once
// Where a feature reports in one sentence what happened, for the status line. Not for questions and message
// boxes (ports/dialogs.h).

#include <vector>

#include "app/text/text.h"

namespace app {

class Notices {
 public:
  virtual ~Notices() = default;

  /// Shows `sentence`, one of app/state/status_sentences.h, in the user's language. "%1" to "%9" stand for
  /// the `arguments`, which are not translated. A later sentence replaces it.
  virtual void Notify(TextView sentence, const std::vector<Text>& arguments) = 0;
  void Notify(TextView sentence) { Notify(sentence, {}); }
};

}  // namespace app
