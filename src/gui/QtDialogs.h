#pragma once

#include "core/Dialogs.h"

class QWidget;

namespace hipico {

// Real boxes on screen (QMessageBox / QInputDialog), over the active window.
// A box that opens does not take keys for its first moments: keys typed
// ahead, before the user could read it, are dropped instead of answering it.
class QtDialogs : public Dialogs {
public:
    explicit QtDialogs(QWidget* parent = nullptr) : parent_(parent) {}
    void message(Icon icon, const QString& title, const QString& text) override;
    bool confirm(const QString& title, const QString& text, bool noByDefault, Icon icon) override;
    std::optional<QString> ask(const QString& title, const QString& prompt, const QString& initial) override;
    // A box without a question that leaves the cursor where it was.
    void notify(Icon icon, const QString& title, const QString& text) override;

    // How long a new box ignores the keyboard.
    static constexpr int kTeclasIgnoradasMs = 500;

private:
    QWidget* owner() const;
    QWidget* parent_;
};

}  // namespace hipico
