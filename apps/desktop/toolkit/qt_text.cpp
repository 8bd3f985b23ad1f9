#include "toolkit/qt_text.h"

namespace brenvik::desktop {

QString ToQt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string FromQt(const QString& text) { return text.toStdString(); }

}  // namespace brenvik::desktop
