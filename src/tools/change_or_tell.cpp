// Reports the parts that a drawing tool could not change.
#include "tools/change_or_tell.h"

#include "base/skip.h"
#include "parts/mautocad.h"
#include "parts/part_trouble.h"

namespace brenvik {

void ChangeOrTell(AcadEntity& entity, const std::function<void(AcadEntity&)>& change) {
    const std::optional<Failure> failure = Attempt([&] { change(entity); });
    if (!failure) return;
    std::string name;
    Skip([&] { name = mAutoCAD::PartDataOf(entity, "PartName"); });
    NotePartTrouble({entity.Handle(), name, std::string("it is left as it was: ") + failure->what()});
}

}  // namespace brenvik
