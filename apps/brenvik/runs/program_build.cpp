// The linker's marks lie in memory, beside the code that they are of.
#include "runs/program_build.h"

#include <elf.h>
#include <link.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <optional>
#include <string_view>

#include "base/hex.h"
#include "base/packed_text.h"
#include "base/sha256.h"
#include "file_roots/file_content.h"

namespace brenvik::app {

namespace {

/// Notes stand one behind the other, name and content filled up to words of four bytes.
std::optional<std::string> MarkIn(std::string_view notes) {
    constexpr std::string_view owner("GNU\0", 4);
    const auto filled = [](std::size_t size) { return (size + 3) / 4 * 4; };
    ElfW(Nhdr) head;
    while (notes.size() >= sizeof head) {
        std::memcpy(&head, notes.data(), sizeof head);
        notes.remove_prefix(sizeof head);
        const std::size_t name = filled(head.n_namesz), content = filled(head.n_descsz);
        if (name > notes.size() || content > notes.size() - name) break;
        if (head.n_type == NT_GNU_BUILD_ID && notes.substr(0, head.n_namesz) == owner)
            return HexOf(notes.substr(name, head.n_descsz), SmallHexDigits);
        notes.remove_prefix(name + content);
    }
    return std::nullopt;
}

/// The program's own mark has a blank name.
using Marks = std::map<std::string, std::string>;

int TakeMark(dl_phdr_info* info, std::size_t, void* marks) {
    for (ElfW(Half) at = 0; at < info->dlpi_phnum; ++at) {
        const ElfW(Phdr)& part = info->dlpi_phdr[at];
        if (part.p_type != PT_NOTE) continue;
        const auto* notes = reinterpret_cast<const char*>(info->dlpi_addr + part.p_vaddr);
        if (const auto mark = MarkIn({notes, part.p_memsz})) {
            std::string_view name = info->dlpi_name;
            name.remove_prefix(name.rfind('/') + 1);
            static_cast<Marks*>(marks)->emplace(name, *mark);
        }
    }
    return 0;
}

Marks LoadedMarks() {
    Marks marks;
    dl_iterate_phdr(TakeMark, &marks);
    return marks;
}

bool Computes(std::string_view library) {
    constexpr std::array<std::string_view, 3> heads{"libTK", "libm.so", "libstdc++"};
    return std::ranges::any_of(heads, [library](std::string_view head) { return library.starts_with(head); });
}

}  // namespace

std::string BuildOfProgram() {
    const Marks marks = LoadedMarks();
    if (const auto own = marks.find(""); own != marks.end()) return own->second;
    return Sha256(ContentIfAny("/proc/self/exe").value_or(""));
}

std::string BuildOfModeller() {
    std::string packed;
    for (const auto& [name, mark] : LoadedMarks())
        if (Computes(name)) PackTexts(packed, {name, mark});
    return packed.empty() ? packed : Sha256(packed);
}

}  // namespace brenvik::app
