#include "stream/query_failure.h"

namespace stream {

QueryFailure QueryFailureFrom(platform::InternetFailure failure) {
  using platform::InternetFailure;
  switch (failure) {
    case InternetFailure::kNoAnswer:
      return {QueryFailure::Kind::kNoAnswer};
    case InternetFailure::kUnknownHost:
      return {QueryFailure::Kind::kUnknownHost};
    case InternetFailure::kRefused:
      return {QueryFailure::Kind::kRefused};
    case InternetFailure::kGivenUp:
      return {QueryFailure::Kind::kGivenUp};
    default:
      return {QueryFailure::Kind::kOther};
  }
}

}  // namespace stream
