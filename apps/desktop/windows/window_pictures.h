// Pictures of windows, for the guide and for looking at them.
#pragma once

#include <QWidget>
#include <map>
#include <string>

namespace brenvik::desktop {

class WindowPictures {
  public:
    /// Into this folder; none for a blank one.
    explicit WindowPictures(std::string folder) : mFolder(std::move(folder)) {}
    /// Lets the window draw itself and writes NAME-1.png, NAME-2.png and so on. Throws a Failure where it
    /// can't.
    void Take(QWidget& window, const std::string& name);

  private:
    std::string mFolder;
    std::map<std::string, int> mCount;
};

}  // namespace brenvik::desktop
