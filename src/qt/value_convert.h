// The binding's one place for turning recordset values into what Qt shows and
// edits, and Qt's edit values back into values for Modify.
#pragma once

#include <QString>
#include <QVariant>
#include <string_view>

#include "varnel/varnel.h"

namespace varnel::qt::detail {

// How a field's values are shown: as text, a check box, a date or a number.
enum class ValueKind {
  kText,
  kBoolean,
  kDate,
  kDateTime,
  kTime,
  kInteger,
  kFloat,
  kPercent,
  kCurrency
};

ValueKind KindOf(const ClsFields& field);
// True for the kinds shown right-aligned.
bool IsNumeric(ValueKind kind);

// The value stored in row, also in query mode (when GetValue gives the
// criterion): the grid goes on showing the rows while criteria are typed.
// Empty outside the rows; the reference lives while the row's value is unchanged.
const Variant& StoredValue(const ClsFields& field, int32_t row);
// The field holding a currency field's sign in each row (its SymbolName); nullptr for none.
const ClsFields* SignField(const ClsFields& field);

// An amount of 1/10000 units with two decimals, or up to four when it has them.
QString AmountText(int64_t units);
// A non-blank amount with sign before it: "$12.50", "-€3.10".
QString SignedAmountText(const Variant& value, const QString& sign);

// The text a cell shows for value in row (the currency sign is the symbol of that row).
QString DisplayText(const ClsFields& field, const Variant& value, int32_t row);
// The same with the field's kind and sign field already known (grids cache them per column).
QString DisplayText(const ClsFields& field, ValueKind kind, const Variant& value,
                    const ClsFields* sign_field, int32_t row);
// The value as the natural Qt type of its kind (QDate, QDateTime, QTime, bool,
// qlonglong, double, QString); an invalid QVariant for a blank value.
QVariant EditValue(const ClsFields& field, const Variant& value);
// A Qt edit value as the Variant that Modify checks; text stays text so that
// FormatValue reads it exactly.
Variant FromQt(const QVariant& value);

// Dates: days from 1899-12-30, the fraction the time of day.
QDateTime ToQDateTime(Date date);
Date FromQDateTime(const QDateTime& when);

QString ToQString(std::string_view text);
std::string FromQString(const QString& text);

// The caption of a field: DisplayName, else Name.
QString Caption(const ClsFields& field);

}  // namespace varnel::qt::detail
