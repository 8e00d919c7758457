#pragma once

#include <QDateTime>

namespace hipico {

// "Now" for the program; tests fix it.
class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
    QDate today() const { return now().date(); }
};

class SystemClock : public Clock {
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};

class FixedClock : public Clock {
public:
    explicit FixedClock(QDateTime at = QDateTime(QDate(2026, 11, 23), QTime(10, 30, 0))) : at_(std::move(at)) {}
    QDateTime now() const override { return at_; }
    void set(const QDateTime& at) { at_ = at; }
    void advance(int seconds) { at_ = at_.addSecs(seconds); }

private:
    QDateTime at_;
};

}  // namespace hipico
