#pragma once

#include <QLineEdit>
#include <functional>

namespace quorvex {

/// A QLineEdit that tells of its keys, as handlers of this window want them. Only typing counts: pasted
/// text passes as it is, less its line breaks.
class FieldEdit : public QLineEdit {
public:
    explicit FieldEdit(QWidget* parent = nullptr);

    /// What becomes of each typed character; see key_filter.h.
    void setKeyFilter(char16_t (*filter)(char16_t)) { filter_ = filter; }
    /// Called, guarded, for each typed character that the filter has let pass or not, Enter included,
    /// before the field takes it. The argument is the filtered character.
    void onKeyPress(std::function<void(char16_t)> handler) { keyPress_ = std::move(handler); }
    /// Called, guarded, after each key release.
    void onKeyUp(std::function<void()> handler) { keyUp_ = std::move(handler); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;

private:
    /// The character as the filter leaves it, after the handler has been told; 0 if it is swallowed.
    char16_t filteredCharacter(char16_t typed);
    /// Each character of a text in turn.
    QString filteredText(const QString& typed);

    char16_t (*filter_)(char16_t) = nullptr;
    std::function<void(char16_t)> keyPress_;
    std::function<void()> keyUp_;
};

}  // namespace quorvex
