#pragma once

#include "ports/ImageDecoder.hpp"

#include <memory>
#include <string>

namespace vexto {

// Images through the TIFF decoder module, loaded the first time a picture is decoded: libtiff
// and the codecs it pulls in cost a start that shows no image (a headless run) more than
// everything else the pane loads. The module lies beside the shared runtime.
class DeferredImageDecoder final : public ImageDecoder {
public:
    static constexpr const char* moduleName = "libvexto-tiff.so";
    static constexpr const char* createSymbol = "vexto_create_tiff_image_decoder";

    DeferredImageDecoder();
    ~DeferredImageDecoder() override;
    DeferredImageDecoder(const DeferredImageDecoder&) = delete;
    DeferredImageDecoder& operator=(const DeferredImageDecoder&) = delete;

    std::optional<Bitmap> decode(const std::string& path, double scale) const override;

    // Where the module is looked for: the folder of the shared runtime.
    static std::string modulePath();

private:
    mutable bool tried_ = false;
    mutable std::unique_ptr<ImageDecoder> decoder_;
};

} // namespace vexto
