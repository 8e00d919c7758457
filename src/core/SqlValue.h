#pragma once

#include <QString>
#include <cstdint>
#include <string>
#include <vector>

namespace hipico {

// One value bound to a "?" of a statement. Values never become part of the
// SQL text: they travel to the server as parameters of their own type.
class SqlValue {
public:
    enum class Kind { Null, Integer, Double, Text };

    SqlValue() = default;
    SqlValue(std::nullptr_t) {}
    SqlValue(int v) : kind_(Kind::Integer), integer_(v) {}
    SqlValue(unsigned v) : kind_(Kind::Integer), integer_(v) {}
    SqlValue(long v) : kind_(Kind::Integer), integer_(v) {}
    SqlValue(long long v) : kind_(Kind::Integer), integer_(v) {}
    SqlValue(double v) : kind_(Kind::Double), double_(v) {}
    SqlValue(const QString& v) : kind_(Kind::Text), text_(v.toStdString()) {}
    SqlValue(const char* v) : kind_(Kind::Text), text_(v ? v : "") {}
    SqlValue(const std::string& v) : kind_(Kind::Text), text_(v) {}
    SqlValue(bool) = delete;  // say 0 or 1: flags are integers in the tables

    Kind kind() const { return kind_; }
    bool isNull() const { return kind_ == Kind::Null; }
    long long integer() const { return integer_; }
    double number() const { return double_; }
    const std::string& utf8() const { return text_; }
    QString toString() const;

    // Storage SOCI binds to by reference.
    long long& integerRef() { return integer_; }
    double& doubleRef() { return double_; }
    std::string& textRef() { return text_; }

private:
    Kind kind_ = Kind::Null;
    long long integer_ = 0;
    double double_ = 0;
    std::string text_;
};

using Params = std::vector<SqlValue>;

// User text inside a LIKE pattern, to match literally: "%", "_" and the
// escape character "!" itself are escaped with "!". Statements that use it
// say so: "... like concat('%', ?, '%') ESCAPE '!'".
inline QString literalLike(const QString& texto) {
    QString out;
    out.reserve(texto.size());
    for (const QChar c : texto) {
        if (c == QLatin1Char('%') || c == QLatin1Char('_') || c == QLatin1Char('!')) out += QLatin1Char('!');
        out += c;
    }
    return out;
}

}  // namespace hipico
