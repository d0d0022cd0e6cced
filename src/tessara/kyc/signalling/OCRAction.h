#pragma once

#include <optional>
#include <string_view>

namespace tessara {

// What an "ocr" message asks of the document reading; the raw strings are the wire values.
enum class OCRAction {
    start,
    stop,
};

std::string_view rawValueUtf8(OCRAction action);
std::optional<OCRAction> ocrActionFromRaw(std::string_view raw);

} // namespace tessara
