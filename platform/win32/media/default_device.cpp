#include "platform/win32/media/default_device.h"

#include "platform/win32/base/windows_api.h"

#include <audioclient.h>
#include <mmdeviceapi.h>

#include "platform/win32/base/com_pointer.h"

namespace platform::win32 {
namespace {

/// How much sound the device is to hold, in units of 100 ns. It gets none.
constexpr REFERENCE_TIME kHeldSound = 500'000;

bool Opens(::IAudioClient& client) {
  WAVEFORMATEX* format = nullptr;
  if (client.GetMixFormat(&format) != S_OK) return false;
  const HRESULT opened = client.Initialize(AUDCLNT_SHAREMODE_SHARED, 0, kHeldSound, 0, format, nullptr);
  CoTaskMemFree(format);
  return opened == S_OK;
}

}  // namespace

bool DefaultDeviceTakesSound() {
  ComPointer<::IMMDeviceEnumerator> devices;
  ComPointer<::IMMDevice> device;
  ComPointer<::IAudioClient> client;
  return CoCreateInstance(__uuidof(::MMDeviceEnumerator), nullptr, CLSCTX_ALL,
                          __uuidof(::IMMDeviceEnumerator), devices.ReceiveAny()) == S_OK &&
         devices->GetDefaultAudioEndpoint(eRender, eConsole, device.Receive()) == S_OK &&
         device->Activate(__uuidof(::IAudioClient), CLSCTX_ALL, nullptr, client.ReceiveAny()) == S_OK &&
         Opens(*client.Get());
}

}  // namespace platform::win32
