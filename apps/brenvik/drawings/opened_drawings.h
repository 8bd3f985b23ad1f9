// Whether the drawings of a call hold what no file has yet.
#pragma once

#include <list>
#include <string>
#include <utility>
#include <vector>

#include "drafting_host/document/drawing_state.h"
#include "drafting_host/document/host_document.h"

namespace brenvik::app {

/// The drawings that were opened, each as it was when it was read or saved last.
class OpenedDrawings {
  public:
    struct Opened {
        /// Null for one that the journal has closed: the host keeps it for a while only.
        const HostDocument* document;
        std::string name;
        /// The number of notes from when it was read.
        std::size_t notes;
        DrawingState saved;
        /// The file that holds that state, where it isn't the one that was opened.
        std::string savedAs;
        /// None in a drawing that was closed since: whoever closed it has saved or discarded them.
        bool HasChanges() const {
            return document != nullptr && !document->Closed() && !(saved == DrawingState(*document));
        }
    };
    void Add(const HostDocument& document, std::string name) {
        mDrawings.push_back(
            {&document, std::move(name), document.Notes().size(), DrawingState(document), ""});
    }
    void NoteSaved(const HostDocument& document, const std::string& file) {
        for (Opened& opened : mDrawings) {
            if (opened.document != &document) continue;
            opened.saved = DrawingState(document);
            opened.savedAs = file;
        }
    }
    void NoteClosed(const HostDocument& document) {
        for (Opened& opened : mDrawings)
            if (opened.document == &document) opened.document = nullptr;
    }
    const std::list<Opened>& All() const { return mDrawings; }

  private:
    std::list<Opened> mDrawings;
};

}  // namespace brenvik::app
