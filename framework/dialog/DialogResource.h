// Pictures and size of a dialog by its resource: an extended dialog template. Another kind of
// template has neither.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

struct TemplatePicture {
    /// The control's id.
    int control;
    /// The id of its bitmap or icon.
    int picture;
};

/// The controls with a number in place of a text, in the template's order. Nothing beyond `size` is
/// read; a template that ends too early has the controls up to there.
std::vector<TemplatePicture> PicturesOfTemplate(const std::uint8_t* bytes, std::size_t size);

/// In dialog units.
struct TemplateSize {
    int width;
    int height;
};
/// The client area; 0 by 0 for a template that ends before it.
TemplateSize SizeOfTemplate(const std::uint8_t* bytes, std::size_t size);
