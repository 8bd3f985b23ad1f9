// What carries out the text that programs and people type. The documents know it by this interface alone,
// so that the object model stays below the commands that are built on it.
#pragma once

#include <string_view>

namespace brenvik {

class HostDocument;

class CommandLinePort {
  public:
    virtual ~CommandLinePort() = default;
    /// Types text on the document's command line. What the text sets going has been done when the call
    /// returns; a command that still wants answers stays open.
    virtual void Send(HostDocument& document, std::string_view text) = 0;
    /// The document is about to be closed.
    virtual void Forget(HostDocument& document) = 0;
};

}  // namespace brenvik
