#include "tessara/documents/FieldJSON.h"

#include "tessara/documents/RecordTable.h"

namespace tessara {

namespace {
// `fields` has no key: it is the client's own expansion of a section, so it is never read nor
// written and a decoded field always starts without it. "allignment" is the backend's spelling.
constexpr RecordTable kTable{
    field("allignment", &FieldJSON::alignment),
    field("allowedExt", &FieldJSON::allowedFileExtensions),
    field("condition", &FieldJSON::condition),
    field("consentContent", &FieldJSON::consentContent),
    field("directionId", &FieldJSON::directionId),
    field("directionLabel", &FieldJSON::directionLabel),
    field("extError", &FieldJSON::fileExtensionError),
    field("fieldId", &FieldJSON::fieldId),
    field("flowDirectionId", &FieldJSON::flowDirectionId),
    field("flowDirectionType", &FieldJSON::flowDirectionType),
    field("flowFieldId", &FieldJSON::flowFieldId),
    field("hidden", &FieldJSON::isHidden),
    field("hideInEndUserFrontend", &FieldJSON::hideInEndUserFrontend),
    field("key", &FieldJSON::key),
    field("label", &FieldJSON::label),
    field("maxSize", &FieldJSON::maximumFileSize),
    field("notes", &FieldJSON::notes),
    field("options", &FieldJSON::options),
    field("required", &FieldJSON::isRequired),
    field("sizeError", &FieldJSON::fileSizeError),
    field("specialType", &FieldJSON::specialType),
    field("styleClass", &FieldJSON::styleClass),
    field("type", &FieldJSON::type),
    field("validation", &FieldJSON::validation),
    field("validationError", &FieldJSON::validationError),
    field("value", &FieldJSON::value),
    field("variableLabel", &FieldJSON::variableLabel),
    field("variableType", &FieldJSON::variableType),
};
} // namespace

TESSARA_DEFINE_RECORD(FieldJSON, kTable)

} // namespace tessara
