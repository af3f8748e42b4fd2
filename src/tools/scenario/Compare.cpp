#include "tools/scenario/Compare.h"

namespace scenario {
namespace {

enum class Sort { Text, Number, Boolean, Nothing };

Sort sortOf(const QVariant& v) {
    if (!v.isValid())
        return Sort::Nothing;
    switch (v.typeId()) {
    case QMetaType::Bool:
        return Sort::Boolean;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
        return Sort::Number;
    default:
        return Sort::Text;
    }
}

} // namespace

bool sameValue(const QVariant& actual, const Value& expected) {
    const Sort sort = sortOf(actual);
    switch (expected.type) {
    case Value::Text:
        return sort == Sort::Text && actual.toString() == expected.text;
    case Value::Number:
        if (sort == Sort::Boolean)
            return expected.number == (actual.toBool() ? -1 : 0);
        return sort == Sort::Number && actual.toLongLong() == expected.number;
    case Value::Boolean:
        if (sort == Sort::Number)
            return actual.toLongLong() == (expected.boolean ? -1 : 0);
        return sort == Sort::Boolean && actual.toBool() == expected.boolean;
    }
    return false;
}

QString showVariant(const QVariant& value) {
    switch (sortOf(value)) {
    case Sort::Nothing:
        return QStringLiteral("nothing");
    case Sort::Boolean:
        return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    case Sort::Number:
        return QString::number(value.toLongLong());
    case Sort::Text:
        break;
    }
    return quoted(value.toString());
}

} // namespace scenario
