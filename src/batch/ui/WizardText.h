#pragma once
// Small helpers shared by the wizard's steps: text between std::string and QString, paths
// that keep the host's bytes, and naming a control so tests and style sheets can find it.
#include <QFile>
#include <QString>
#include <string>
#include <string_view>

namespace quorbel::wizard {

inline QString Q(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }
inline std::string S(const QString& text) { return text.toStdString(); }

// Paths typed or dropped keep the host's bytes.
inline std::string PathText(const QString& text) { return QFile::encodeName(text).toStdString(); }
inline QString PathQ(const std::string& path) { return QFile::decodeName(QByteArray::fromStdString(path)); }

// The control, named as the wizard names it.
template <class W>
W* Named(W* widget, const char* name) {
    widget->setObjectName(name);
    return widget;
}

}  // namespace quorbel::wizard
