#include "platform/win32/ui/picture_file.h"

#include "platform/win32/base/windows_api.h"

#include <objbase.h>
#include <wincodec.h>

#include <algorithm>

#include "platform/win32/base/com_pointer.h"
#include "platform/win32/base/wide.h"

namespace platform::win32 {
namespace {

constexpr UINT kWidestPicture = 20000;
constexpr UINT kWidestKept = 1024;

struct Size {
  UINT width = 0;
  UINT height = 0;
};

Size Kept(Size natural) {
  const UINT widest = std::max(natural.width, natural.height);
  if (widest <= kWidestKept) return natural;
  return {std::max(1U, natural.width * kWidestKept / widest),
          std::max(1U, natural.height * kWidestKept / widest)};
}

std::optional<Pixels> Read(IWICImagingFactory& factory, IWICBitmapSource& frame, Size size) {
  ComPointer<IWICBitmapScaler> scaler;
  ComPointer<IWICFormatConverter> converter;
  if (FAILED(factory.CreateBitmapScaler(scaler.Receive())) ||
      FAILED(scaler->Initialize(&frame, size.width, size.height, WICBitmapInterpolationModeFant)) ||
      FAILED(factory.CreateFormatConverter(converter.Receive())) ||
      FAILED(converter->Initialize(scaler.Get(), GUID_WICPixelFormat32bppPBGRA, WICBitmapDitherTypeNone,
                                   nullptr, 0.0, WICBitmapPaletteTypeCustom))) {
    return std::nullopt;
  }
  Pixels pixels{static_cast<int>(size.width), static_cast<int>(size.height), {}};
  pixels.bytes.resize(std::size_t{4} * size.width * size.height);
  const HRESULT copied = converter->CopyPixels(nullptr, 4 * size.width,
                                               static_cast<UINT>(pixels.bytes.size()), pixels.bytes.data());
  if (FAILED(copied)) return std::nullopt;
  return pixels;
}

}  // namespace

std::optional<DecodedPicture> DecodePictureFile(const Text& path) {
  ComPointer<IWICImagingFactory> factory;
  ComPointer<IWICBitmapDecoder> decoder;
  ComPointer<IWICBitmapFrameDecode> frame;
  Size natural;
  if (FAILED(::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                IID_IWICImagingFactory, factory.ReceiveAny())) ||
      FAILED(factory->CreateDecoderFromFilename(Wide(path), nullptr, GENERIC_READ,
                                                WICDecodeMetadataCacheOnDemand, decoder.Receive())) ||
      FAILED(decoder->GetFrame(0, frame.Receive())) ||
      FAILED(frame->GetSize(&natural.width, &natural.height))) {
    return std::nullopt;
  }
  const bool usable = natural.width > 0 && natural.height > 0 && natural.width <= kWidestPicture &&
                      natural.height <= kWidestPicture;
  if (!usable) return std::nullopt;
  auto pixels = Read(*factory.Get(), *frame.Get(), Kept(natural));
  if (!pixels) return std::nullopt;
  return DecodedPicture{static_cast<int>(natural.width), static_cast<int>(natural.height),
                        std::move(*pixels)};
}

}  // namespace platform::win32
