#pragma once

#include <QString>
#include <QStringView>
#include <optional>
#include <string_view>

namespace tessara {

/// Semantic tag of a field. `FieldJSON::specialType` keeps the wire string; code compares it with
/// rawValue() of these cases. Case names and wire strings differ on purpose in many rows.
enum class SpecialType {
    address,
    amount,
    checkForm1,
    checkForm2,
    checkHolo1,
    checkHolo2,
    chooseProduct,
    dateFormat,
    dateOfExpiration,
    dateOfIssue,
    documentID,
    firstInstalmentSetting,
    givenName,
    givenNameEN,
    idBackURL,
    idFrontURL,
    instalmentAmount,
    instalmentDate,
    issuingAuthority,
    middleName,
    middleNameEN,
    MRZ,
    nationality,
    periods,
    periodsPlural,
    periodsSingular,
    placeOfBirth,
    popup,
    productID,
    status,
    sumFormat,
    surname,
    surnameEN,
    totalAmountSetting,
    totalSum,
    UIC,
    videoURL,
};

/// The number of cases.
inline constexpr int kSpecialTypeCount = 37;

/// The wire string of a case ("ADDRESS", "FATHER_NAME_EN", ...).
///@{
QString rawValue(SpecialType type);
std::string_view rawValueUtf8(SpecialType type);
///@}
/// The case of a wire string; std::nullopt for an unknown string.
std::optional<SpecialType> specialTypeFromRaw(QStringView raw);

} // namespace tessara
