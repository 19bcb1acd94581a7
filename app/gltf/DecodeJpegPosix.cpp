#include <csetjmp>
#include <cstdio>
#include <functional>

#include <jpeglib.h>

#include <jerror.h>

#include "gltf/DecodeImage.h"

namespace tq4x::gltf
{
namespace
{

constexpr long MaxLibraryMemory = 1L << 30; // bytes: progressive files are held whole
constexpr int MaxScans = 1000;              // each scan of a progressive file costs a pass over the picture

// What the library's callbacks work on; the first member is the one that it knows.
struct JpegErrors
{
    jpeg_error_mgr Manager;
    std::jmp_buf Exit;
    std::string Error;
};

[[noreturn]] void Leave(j_common_ptr jpeg)
{
    auto& errors = *reinterpret_cast<JpegErrors*>(jpeg->err);
    std::longjmp(errors.Exit, 1);
}

[[noreturn]] void KeepError(j_common_ptr jpeg)
{
    char text[JMSG_LENGTH_MAX];
    jpeg->err->format_message(jpeg, text);
    reinterpret_cast<JpegErrors*>(jpeg->err)->Error = std::string("The JPEG file is damaged: ") + text + ".";
    Leave(jpeg);
}

// Warnings are passed over, but for those that say that the rest of the picture is missing: the library would
// make it up.
void JudgeWarning(j_common_ptr jpeg, int level)
{
    const int code = jpeg->err->msg_code;
    if (level < 0 && (code == JWRN_JPEG_EOF || code == JWRN_HIT_MARKER)) {
        KeepError(jpeg);
    }
}

void CountScans(j_common_ptr jpeg)
{
    if (reinterpret_cast<j_decompress_ptr>(jpeg)->input_scan_number > MaxScans) {
        reinterpret_cast<JpegErrors*>(jpeg->err)->Error = "The JPEG file has too many scans.";
        Leave(jpeg);
    }
}

struct JpegReader
{
    JpegReader()
    {
        Jpeg.err = jpeg_std_error(&Errors.Manager);
        Errors.Manager.error_exit = KeepError;
        Errors.Manager.emit_message = JudgeWarning;
        Progress.progress_monitor = CountScans;
    }

    JpegReader(const JpegReader&) = delete;
    JpegReader& operator=(const JpegReader&) = delete;

    ~JpegReader() { jpeg_destroy_decompress(&Jpeg); }

    jpeg_decompress_struct Jpeg{};
    JpegErrors Errors{};
    jpeg_progress_mgr Progress{};
};

// One row of the library's output as four channels. It has one grey channel, three colours, or four inks;
// files with the marker of the program that invented it store inks inverted, as what they leave of the light.
void ConvertRow(const jpeg_decompress_struct& jpeg, const std::uint8_t* from, std::uint8_t* into)
{
    const int components = jpeg.output_components;
    const int flip = jpeg.saw_Adobe_marker ? 0 : 255;
    for (JDIMENSION x = 0; x < jpeg.output_width; ++x, from += components, into += 4) {
        for (int channel = 0; channel < 3; ++channel) {
            const int value = from[components == 1 ? 0 : channel];
            into[channel] =
                static_cast<std::uint8_t>(components == 4 ? (value ^ flip) * (from[3] ^ flip) / 255 : value);
        }
        into[3] = 255;
    }
}

void ChooseColors(jpeg_decompress_struct& jpeg)
{
    if (jpeg.jpeg_color_space == JCS_CMYK || jpeg.jpeg_color_space == JCS_YCCK) {
        jpeg.out_color_space = JCS_CMYK;
    } else if (jpeg.jpeg_color_space != JCS_GRAYSCALE) {
        jpeg.out_color_space = JCS_RGB;
    }
}

// Fills the picture; what fails is left in the error. The library may leave this by a jump, so it owns
// nothing: all that it fills belongs to its caller's caller.
void ReadPicture(JpegReader& reader, std::span<const std::uint8_t> file, Picture& picture,
                 std::vector<std::uint8_t>& row)
{
    jpeg_decompress_struct& jpeg = reader.Jpeg;
    jpeg_create_decompress(&jpeg);
    jpeg.progress = &reader.Progress;
    jpeg.mem->max_memory_to_use = MaxLibraryMemory;
    jpeg_mem_src(&jpeg, file.data(), static_cast<unsigned long>(file.size()));
    jpeg_read_header(&jpeg, TRUE);
    picture.Width = jpeg.image_width;
    picture.Height = jpeg.image_height;
    reader.Errors.Error = CheckPictureSize(picture.Width, picture.Height);
    if (!reader.Errors.Error.empty()) {
        return;
    }
    ChooseColors(jpeg);
    jpeg_start_decompress(&jpeg);
    picture.Pixels.resize(std::size_t{picture.Width} * picture.Height * 4);
    row.resize(std::size_t{picture.Width} * static_cast<std::size_t>(jpeg.output_components));
    while (jpeg.output_scanline < jpeg.output_height) {
        std::uint8_t* const into =
            picture.Pixels.data() + std::size_t{jpeg.output_scanline} * picture.Width * 4;
        std::uint8_t* rows[] = {row.data()};
        jpeg_read_scanlines(&jpeg, rows, 1);
        ConvertRow(jpeg, row.data(), into);
    }
}

// The one place that a jump comes back to.
void CatchJump(JpegErrors& errors, const std::function<void()>& work)
{
    if (setjmp(errors.Exit) == 0) {
        work();
    }
}

} // namespace

DecodedImage DecodeJpeg(std::span<const std::uint8_t> file)
{
    JpegReader reader;
    DecodedImage image;
    std::vector<std::uint8_t> row;
    CatchJump(reader.Errors, [&] { ReadPicture(reader, file, image.Content, row); });
    if (!reader.Errors.Error.empty()) {
        return {{}, reader.Errors.Error};
    }
    return image;
}

} // namespace tq4x::gltf
