#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <map>

class QWidget;

namespace hipico {

class Context;

// The windows the main menu can open, by menu entry name ("vg_menu",
// "carreras_menu"...). The program registers every window it has (src/app);
// the menu shows an entry only when its window is registered here or the
// entry is one of the menu's own functions.
class WindowRegistry {
public:
    using Factory = std::function<QWidget*(Context& ctx, QWidget* menu)>;

    void add(const QString& entrada, Factory factory) { factories_[entrada] = std::move(factory); }
    bool has(const QString& entrada) const { return factories_.count(entrada) > 0; }
    // A new window for the entry (nullptr when none is registered).
    QWidget* create(const QString& entrada, Context& ctx, QWidget* menu) const {
        auto it = factories_.find(entrada);
        return it == factories_.end() ? nullptr : it->second(ctx, menu);
    }
    QStringList entries() const {
        QStringList out;
        for (const auto& [k, v] : factories_) out << k;
        return out;
    }

private:
    std::map<QString, Factory> factories_;
};

}  // namespace hipico
