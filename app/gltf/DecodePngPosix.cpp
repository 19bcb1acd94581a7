#include <algorithm>
#include <bit>
#include <csetjmp>
#include <cstring>
#include <functional>

#include <png.h>

#include "gltf/DecodeImage.h"

namespace tq4x::gltf
{
namespace
{

// What the library's callbacks work on.
struct PngSource
{
    std::span<const std::uint8_t> Rest;
    std::string Error;
};

void TakeBytes(png_structp png, png_bytep into, png_size_t size)
{
    auto& source = *static_cast<PngSource*>(png_get_io_ptr(png));
    if (size > source.Rest.size()) {
        png_error(png, "unexpected end of file");
    }
    std::memcpy(into, source.Rest.data(), size);
    source.Rest = source.Rest.subspan(size);
}

// The library wants this not to return; the text is kept before the jump.
[[noreturn]] void KeepError(png_structp png, png_const_charp text)
{
    static_cast<PngSource*>(png_get_error_ptr(png))->Error =
        std::string("The PNG file is damaged: ") + text + ".";
    png_longjmp(png, 1);
}

void IgnoreWarning(png_structp, png_const_charp) {}

// The library's objects; `Info` is null where they could not be made.
struct PngReader
{
    explicit PngReader(PngSource& source)
        : Png(png_create_read_struct(PNG_LIBPNG_VER_STRING, &source, KeepError, IgnoreWarning)),
          Info(Png == nullptr ? nullptr : png_create_info_struct(Png))
    {
        if (Info != nullptr) {
            png_set_read_fn(Png, &source, TakeBytes);
            png_set_user_limits(Png, PNG_UINT_31_MAX, PNG_UINT_31_MAX); // `CheckPictureSize` says it better
        }
    }

    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;

    ~PngReader() { png_destroy_read_struct(&Png, &Info, nullptr); }

    png_structp Png;
    png_infop Info;
};

// Asks for red, green, blue and alpha of 8 or 16 bits, whatever the file holds.
void AskForFourChannels(png_structp png, png_infop info)
{
    const png_byte depth = png_get_bit_depth(png, info);
    png_set_expand(png); // palettes, small grey depths, transparent colours
    if ((png_get_color_type(png, info) & PNG_COLOR_MASK_COLOR) == 0) {
        png_set_gray_to_rgb(png);
    }
    png_set_add_alpha(png, depth == 16 ? 0xffff : 0xff, PNG_FILLER_AFTER);
    if (depth == 16 && std::endian::native == std::endian::little) {
        png_set_swap(png);
    }
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
}

// Fills the picture; what fails is left in the source's error. The library may leave this by a jump, so it
// owns nothing: all that it fills belongs to its caller's caller.
void ReadPicture(PngReader& reader, PngSource& source, Picture& picture, std::vector<png_bytep>& rows)
{
    png_structp const png = reader.Png;
    png_read_info(png, reader.Info);
    picture.Width = png_get_image_width(png, reader.Info);
    picture.Height = png_get_image_height(png, reader.Info);
    source.Error = CheckPictureSize(picture.Width, picture.Height);
    if (!source.Error.empty()) {
        return;
    }
    AskForFourChannels(png, reader.Info);
    picture.ChannelSize = png_get_bit_depth(png, reader.Info) == 16 ? 2 : 1;
    const std::size_t rowSize = std::size_t{picture.Width} * 4 * picture.ChannelSize;
    picture.Pixels.resize(rowSize * picture.Height);
    rows.resize(picture.Height);
    for (std::size_t y = 0; y < rows.size(); ++y) {
        rows[y] = picture.Pixels.data() + y * rowSize;
    }
    png_read_image(png, rows.data());
    png_read_end(png, nullptr);
}

// The one place that a jump comes back to.
void CatchJump(PngReader& reader, const std::function<void()>& work)
{
    if (setjmp(png_jmpbuf(reader.Png)) == 0) {
        work();
    }
}

} // namespace

DecodedImage DecodePng(std::span<const std::uint8_t> file)
{
    PngSource source{file, {}};
    PngReader reader(source);
    if (reader.Info == nullptr) {
        return {{}, "There is not enough memory for the picture."};
    }
    DecodedImage image;
    std::vector<png_bytep> rows;
    CatchJump(reader, [&] { ReadPicture(reader, source, image.Content, rows); });
    if (!source.Error.empty()) {
        return {{}, source.Error};
    }
    return image;
}

} // namespace tq4x::gltf
