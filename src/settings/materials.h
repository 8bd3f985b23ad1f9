// The material and tool library: for each board of a shop its grain, its cutting direction and up to three
// router bits. It is a text file of fifteen lines for each material, read by fixed positions, and a part
// finds its material by a key made of thickness and name.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

inline constexpr std::size_t MaterialFieldCount = 15;
inline constexpr std::size_t MaterialToolCount = 3;

/// The fifteen values of a material as they stand in the file, in its order.
using MaterialTexts = std::array<std::string, MaterialFieldCount>;

/// One router bit. A number of "0" marks an empty slot.
struct MaterialTool {
    std::string number;
    double diameter = 0;  ///< In the units of the run: inches or millimetres.
    std::string spindleSpeed, feedSpeed;

    friend bool operator==(const MaterialTool&, const MaterialTool&) = default;
};

/// What a run knows of a part's material. A blank number of the first tool means that there is none.
struct MaterialRecord {
    std::string material;  ///< The key, in lower case.
    std::int32_t grain = 0;
    std::string direction;  ///< "cc" or "c", in any case.
    std::array<MaterialTool, MaterialToolCount> tools;

    bool Found() const { return !tools.front().number.empty(); }
    friend bool operator==(const MaterialRecord&, const MaterialRecord&) = default;
};

/// What stands before the value on each of the fifteen lines: "material=", "grain=", …
std::span<const std::string_view> MaterialFileKeys();

/// The values as a record: numbers by the lenient rule. Fails with 6 for a grain flag beyond 32 bits.
MaterialRecord MaterialFromTexts(const MaterialTexts& texts);

// The file.

/// The library and, as `materials.bak`, the one before the last saving: in the install folder.
inline constexpr std::string_view MaterialsFile = "materials.txt";
std::string MaterialsPath();
std::string MaterialsBackupPath();

/// A place where the file is not what it should be: the line, from 1, and what was expected there.
struct MaterialDamage {
    std::size_t line = 0;
    std::string text;
};

/// An invalid value of a material, reported as "tool1dia of the material "18 oak" is "abc", expected ...".
struct MaterialFault {
    std::size_t line = 0;
    std::string text;
    /// The value is unusable, and parts of this material are skipped. Other faults are reported, and the
    /// value is used.
    bool unusable = false;
};

struct MaterialLibrary {
    std::vector<MaterialTexts> materials;
    std::vector<MaterialDamage> damages;
    /// Of whole records, and of those that have the key of an earlier one.
    std::vector<MaterialFault> faults;
    /// What ends the lines of the file; blank for a file without any.
    std::string lineEnd;
};

/// All materials of a file's content, the values by position as a run reads them. A record ends at the next
/// head line at the latest: what it lacks is blank then. Bytes that are no UTF-8 are taken for the Western
/// Windows code page.
MaterialLibrary ParseMaterials(std::string_view content);

/// The library's file as it stands. Fails as reading does, and with 321 (invalid file format) for a file that
/// isn't plain text.
std::string ReadMaterialsContent();

/// The materials of the file. Fails as ReadMaterialsContent does.
MaterialLibrary ReadMaterials();

/// The file's text.
std::string MaterialsText(std::span<const MaterialTexts> materials, std::string_view lineEnd);

/// Keeps the present file as `materials.bak`.
void KeepMaterials();

/// Keeps the present file as `materials.bak`, then writes the new one. Fails with the present file untouched.
void SaveMaterials(std::span<const MaterialTexts> materials, std::string_view lineEnd);

/// The places of the lines that begin a record: with "material", whatever stands behind it.
std::vector<std::size_t> MaterialHeads(std::span<const std::string> lines);

/// The value in a line of a record: what stands behind as many characters as the field's key has.
std::string MaterialValue(std::string_view line, std::size_t field);

// Looking up.

/// The key of a part: its thickness rounded to 2 decimals for an `ExportScaleSetting` of 2 or 3 (a run in
/// millimetres), else to 5, with no zero before the point, a blank, and the name in upper case.
std::string MaterialKey(double thickness, std::string_view materialName, double exportScaleSetting);

/// A material and its faults, from one reading of the library.
struct CheckedMaterial {
    MaterialTexts texts;
    std::size_t head = 0;  ///< The line of its key, from 1.
    std::vector<MaterialFault> faults;
    std::vector<MaterialFault> guessed;  ///< Its lines that were no UTF-8.
};

/// The material with this key, and its faults: ".75 oak" and "0.75 OAK" are the same. Of several, the last
/// one. Values are read by position, so a key of the wrong length truncates its value. Null if there is no
/// such material. Fails as reading the file does, and with 62, naming the line, when the record has fewer
/// than fifteen lines.
std::optional<CheckedMaterial> FindCheckedMaterial(std::string_view key);

/// Where a fault stands and what it is, as a message has it.
std::string MaterialFaultText(const MaterialFault& fault);

/// The same for a run: fills `record`, which stays where there is no such material. Fails as
/// MaterialFromTexts does, too.
std::optional<CheckedMaterial> LookupMaterial(std::string_view key, MaterialRecord& record);

/// What a run reports if a part's material isn't in the library.
std::string UnknownMaterialText(std::string_view key);

/// The material's name as work lists have it: with `ConvertMaterialName` on, the thickness as a fraction of
/// an inch to the nearest 32nd, a blank and the name.
std::string MaterialNameForList(double thicknessInMillimetres, std::string_view materialName);

}  // namespace brenvik
