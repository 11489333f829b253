// The TIFF decoder as a module of its own, loaded when the first image is decoded.
#include "platform/linux/TiffImageDecoder.hpp"

extern "C" __attribute__((visibility("default"))) vexto::ImageDecoder*
vexto_create_tiff_image_decoder()
{
    return new vexto::TiffImageDecoder();
}
