#include "platform/win32/media/media_opener.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <mfapi.h>
#include <mferror.h>
#include <mfidl.h>

#include "tests/platform/win32/media/slot_object.h"

namespace platform::win32 {
namespace {

HRESULT STDMETHODCALLTYPE GiveDescriptor(SlotObject* self, ::IUnknown** descriptor) {
  *descriptor = static_cast<SlotObject*>(self->pointer)->Reference();
  return S_OK;
}
HRESULT STDMETHODCALLTYPE GiveLength(SlotObject* self, const GUID* key, UINT64* length) {
  self->guid = *key;
  *length = static_cast<UINT64>(self->number);
  return self->result;
}

struct EndlessSource : testing::Test {
  EndlessSource() {
    source.offered = __uuidof(::IMFMediaSource);
    source.Answer(8, &GiveDescriptor);
    source.pointer = &descriptor;
    descriptor.Answer(8, &GiveLength);
  }
  bool IsEndlessWith(HRESULT result, float length) {
    descriptor.result = result;
    descriptor.number = length;
    const bool endless = IsEndless(*source.AsUnknown());
    EXPECT_EQ(source.references + descriptor.references, 0);
    return endless;
  }
  SlotObject source;
  SlotObject descriptor;
};

TEST_F(EndlessSource, SaysNoLength) {
  EXPECT_TRUE(IsEndlessWith(MF_E_ATTRIBUTENOTFOUND, 0));
  EXPECT_TRUE(IsEndlessWith(S_OK, 0));
  EXPECT_FALSE(IsEndlessWith(S_OK, 1));
  EXPECT_TRUE(IsEqualGUID(descriptor.guid, MF_PD_DURATION));
}

TEST_F(EndlessSource, IsASource) {
  source.offered = {};
  EXPECT_FALSE(IsEndlessWith(MF_E_ATTRIBUTENOTFOUND, 0));
}

}  // namespace
}  // namespace platform::win32
