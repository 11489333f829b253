#include "qt/QtKeyNames.hpp"

#include <QKeySequence>
#include <QStringList>

#include <array>
#include <optional>
#include <utility>

namespace vexto {

namespace {

constexpr std::array<std::pair<std::string_view, Qt::KeyboardModifier>, 4> modifierSymbols{{
    {"\u2303", Qt::ControlModifier},
    {"\u2325", Qt::AltModifier},
    {"\u21E7", Qt::ShiftModifier},
    {"\u2318", Qt::MetaModifier},
}};

constexpr std::array<std::pair<std::string_view, Qt::Key>, 15> keySymbols{{
    {"\u21E5", Qt::Key_Tab},
    {"\u232B", Qt::Key_Backspace},
    {"\u21B5", Qt::Key_Return},
    {"\u2305", Qt::Key_Enter},
    {"\u2326", Qt::Key_Delete},
    {"\u2190", Qt::Key_Left},
    {"\u2192", Qt::Key_Right},
    {"\u2193", Qt::Key_Down},
    {"\u2191", Qt::Key_Up},
    {"\u2196", Qt::Key_Home},
    {"\u2198", Qt::Key_End},
    {"\u21DE", Qt::Key_PageUp},
    {"\u21DF", Qt::Key_PageDown},
    {"Space", Qt::Key_Space},
    {"Escape", Qt::Key_Escape},
}};

// The key a label names, with the keypad modifier for the keypad's digits ("#5").
std::optional<QKeyCombination> keyOf(std::string_view label)
{
    for (const auto& [symbol, key] : keySymbols) {
        if (label == symbol) {
            return QKeyCombination(key);
        }
    }
    if (label == "Help") {
        return QKeyCombination(Qt::Key_Help);
    }
    if (label.size() == 2 && label[0] == '#' && label[1] >= '0' && label[1] <= '9') {
        return QKeyCombination(Qt::KeypadModifier, Qt::Key(Qt::Key_0 + (label[1] - '0')));
    }
    if (label.size() >= 2 && label.size() <= 3 && label[0] == 'F') {
        const int number = QString::fromUtf8(label.substr(1)).toInt();
        if (number >= 1 && number <= 19) {
            return QKeyCombination(Qt::Key(Qt::Key_F1 + number - 1));
        }
    }
    const QString text = QString::fromUtf8(label).toUpper();
    if (text.size() == 1 && text[0].isPrint() && !text[0].isSpace()) {
        return QKeyCombination(Qt::Key(text[0].unicode()));
    }
    return std::nullopt;
}

bool onKde()
{
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':');
    return desktops.contains(QStringLiteral("KDE"));
}

} // namespace

QString QtKeyNames::nativeText(std::string_view symbols)
{
    Qt::KeyboardModifiers modifiers;
    std::string_view rest = symbols;
    for (bool found = true; found;) {
        found = false;
        for (const auto& [symbol, modifier] : modifierSymbols) {
            if (rest.starts_with(symbol)) {
                modifiers |= modifier;
                rest.remove_prefix(symbol.size());
                found = true;
            }
        }
    }
    const auto key = keyOf(rest);
    if (!key || rest.empty()) {
        return QString::fromUtf8(symbols);
    }
    const QKeyCombination combination(modifiers | key->keyboardModifiers(), key->key());
    QString text = QKeySequence(combination).toString(QKeySequence::NativeText);
    // Qt says Meta, as KDE does; the other Linux desktops, and their keyboards, say Super.
    if (combination.keyboardModifiers().testFlag(Qt::MetaModifier) && !onKde()) {
        text.replace(QStringLiteral("Meta+"), QStringLiteral("Super+"));
    }
    return text;
}

} // namespace vexto
