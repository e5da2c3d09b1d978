#include "programs/windows/internet_connection.h"

#include "platform/win32/internet/win32_internet.h"
#include "platform/win32/internet/win32_xml_http_request.h"

struct InternetConnection::Parts {
  Parts(platform::MessageLoop& loop, platform::TextConversion& conversion)
      : internet(loop, conversion), requests(conversion) {}
  platform::win32::Win32Internet internet;
  platform::win32::Win32XmlHttpRequests requests;
};

InternetConnection::InternetConnection(platform::MessageLoop& loop, platform::TextConversion& conversion)
    : parts_(std::make_unique<Parts>(loop, conversion)) {}

InternetConnection::~InternetConnection() = default;

platform::Internet& InternetConnection::Internet() const { return parts_->internet; }

platform::XmlHttpRequests& InternetConnection::Requests() const { return parts_->requests; }
