// Text between the core, which has UTF-8, and the toolkit.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace brenvik::desktop {

QString ToQt(std::string_view text);
std::string FromQt(const QString& text);

}  // namespace brenvik::desktop
