#include "framework/dialog/DialogResource.h"

namespace {

// Offsets in bytes, as the format of extended dialog templates has them.
constexpr std::size_t styleOffset = 12;
constexpr std::size_t countOffset = 16;
constexpr std::size_t widthOffset = 22;
constexpr std::size_t heightOffset = 24;
constexpr std::size_t namesOffset = 26;
/// After the font's size: weight, and one byte each for italic and character set.
constexpr std::size_t fontSize = 6;
constexpr std::uint32_t hasFont = 0x40;  // DS_SETFONT
constexpr std::size_t controlIdOffset = 20;
constexpr std::size_t controlNamesOffset = 24;
constexpr int numberFollows = 0xFFFF;

/// Goes through a template. What lies beyond its end reads as 0, and ends it.
class TemplateReader {
  public:
    TemplateReader(const std::uint8_t* newBytes, std::size_t newSize)
        : bytes(newBytes), size(newSize) {}

    /// Another template begins with the low half of its style in place of a version.
    bool IsExtended() const { return WordAt(0) == 1 && WordAt(2) == numberFollows; }
    bool IsAtEnd() const { return offset >= size; }
    void Skip(std::size_t count) { offset += count; }
    void Align() { offset = (offset + 3) & ~std::size_t{3}; }

    int WordAt(std::size_t distance) const {
        const std::size_t at = offset + distance;
        return at + 1 < size ? bytes[at] | bytes[at + 1] << 8 : 0;
    }
    int TakeWord() {
        const int word = WordAt(0);
        Skip(2);
        return word;
    }
    /// A text, or the number in place of one, which is returned; 0 for a text.
    int TakeName() {
        const int first = TakeWord();
        if (first == numberFollows) {
            return TakeWord();
        }
        for (int character = first; character != 0 && !IsAtEnd();) {
            character = TakeWord();
        }
        return 0;
    }

  private:
    const std::uint8_t* bytes;
    std::size_t size;
    std::size_t offset = 0;
};

}  // namespace

std::vector<TemplatePicture> PicturesOfTemplate(const std::uint8_t* bytes, std::size_t size) {
    TemplateReader reader(bytes, size);
    if (!reader.IsExtended()) {
        return {};
    }
    const int count = reader.WordAt(countOffset);
    const bool namesFont = (static_cast<unsigned>(reader.WordAt(styleOffset)) & hasFont) != 0;
    reader.Skip(namesOffset);
    reader.TakeName();  // menu
    reader.TakeName();  // window class
    reader.TakeName();  // caption
    if (namesFont) {
        reader.Skip(fontSize);
        reader.TakeName();
    }
    std::vector<TemplatePicture> pictures;
    for (int i = 0; i < count && !reader.IsAtEnd(); ++i) {
        reader.Align();
        const int control = reader.WordAt(controlIdOffset);
        reader.Skip(controlNamesOffset);
        reader.TakeName();  // class
        if (const int picture = reader.TakeName(); picture != 0) {
            pictures.push_back({control, picture});
        }
        reader.Skip(static_cast<std::size_t>(reader.TakeWord()));  // data for its creation
    }
    return pictures;
}

TemplateSize SizeOfTemplate(const std::uint8_t* bytes, std::size_t size) {
    const TemplateReader reader(bytes, size);
    if (!reader.IsExtended()) {
        return {0, 0};
    }
    return {reader.WordAt(widthOffset), reader.WordAt(heightOffset)};
}
