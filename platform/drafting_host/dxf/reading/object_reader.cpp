// Gathering and joining of objects.
#include "drafting_host/dxf/reading/object_reader.h"

#include <algorithm>
#include <set>

namespace brenvik {

void ObjectReader::TakeDictionary(Groups groups) {
    const Group* const own = FindGroup(groups, 5);
    const HandleValue handle = own == nullptr ? 0 : HandleOf(*own);
    if (handle == 0) return;
    // The root stands first.
    if (mRoot == 0) mRoot = handle;
    Entries& entries = mDictionaries[handle];
    for (const Group& group : groups) {
        if (group.code == 3) entries.emplace_back(mReading.Text(group), 0);
        if ((group.code == 350 || group.code == 360) && !entries.empty() && entries.back().second == 0)
            entries.back().second = HandleOf(group);
    }
}

void ObjectReader::TakeGroup(Groups groups) {
    GroupData data;
    for (const Group& group : groups) {
        switch (group.code) {
            case 5:
                data.handle = HandleOf(group);
                break;
            case 71:
                data.selectable = IntegerOf(group) != 0;
                break;
            case 300:
                data.description = mReading.Text(group);
                break;
            case 340:
                data.members.push_back(HandleOf(group));
                break;
            default:
                break;
        }
    }
    mGroups.push_back(std::move(data));
}

void ObjectReader::TakeLayout(Groups groups) {
    Layout layout;
    bool isLayoutPart = false;
    for (const Group& group : groups) {
        if (group.code == 5) layout.handle = HandleOf(group);
        // The plot settings before it use the same groups for their own ends.
        if (group.code == 100) isLayoutPart = group.value == "AcDbLayout";
        if (isLayoutPart && group.code == 1) layout.name = mReading.Text(group);
        if (isLayoutPart && group.code == 330 && layout.blockRecord == 0)
            layout.blockRecord = HandleOf(group);
    }
    mLayouts.push_back(std::move(layout));
}

void ObjectReader::Take(Record& record) {
    if (mReading.KeepsRecords())
        mReading.file.objects.push_back(KeptRecordOf(record));
    else if (record.name != "DICTIONARY" && record.name != "GROUP")
        ++mReading.unkept[std::string(record.name)];
    DropBrackets(record.groups);
    try {
        if (record.name == "DICTIONARY" || record.name == "ACDBDICTIONARYWDFLT")
            TakeDictionary(record.groups);
        if (record.name == "GROUP") TakeGroup(record.groups);
        if (record.name == "LAYOUT") TakeLayout(record.groups);
    } catch (const EntityRefused& refused) {
        mReading.Note(refused.line, std::string(record.name) + " left out: " + refused.reason);
    }
}

// Of entries with one name the last counts that leads somewhere: what a saving adds for a dead one stands
// last.
const ObjectReader::Entries* ObjectReader::RootDictionary(std::string_view name) {
    const auto root = mDictionaries.find(mRoot);
    if (root == mDictionaries.end()) return nullptr;
    const Entries* entries = nullptr;
    for (const auto& [key, handle] : root->second) {
        if (key != name) continue;
        const auto found = mDictionaries.find(handle);
        if (found == mDictionaries.end() && entries != nullptr) continue;
        mReading.data.fileHandles.insert_or_assign("DICTIONARY " + key, handle);
        if (found != mDictionaries.end()) entries = &found->second;
    }
    return entries;
}

void ObjectReader::NameGroups() {
    std::map<HandleValue, std::string> names;
    if (const Entries* const entries = RootDictionary("ACAD_GROUP"))
        for (const auto& [name, handle] : *entries) names.emplace(handle, name);
    // A name that stands twice in the dictionary belongs to its first group.
    std::set<std::string, LessIgnoreCase> taken;
    std::erase_if(names, [&taken](const auto& entry) {
        return entry.second.empty() || !taken.insert(entry.second).second;
    });
    int number = 0;
    for (GroupData& group : mGroups) {
        const auto name = names.find(group.handle);
        if (name != names.end()) {
            group.name = name->second;
            names.erase(name);
        } else {
            // The form of names that programs give to nameless groups.
            do group.name = "*A" + std::to_string(++number);
            while (!taken.insert(group.name).second);
            mReading.Note(0, "a group that no dictionary names is called " + group.name, false);
        }
        mReading.data.groups.push_back(std::move(group));
    }
    mGroups.clear();
}

void ObjectReader::KeepHandles() {
    auto& handles = mReading.data.fileHandles;
    if (mRoot != 0) handles.emplace("DICTIONARY", mRoot);
    RootDictionary("ACAD_LAYOUT");
    for (const auto& [dictionary, entry] :
         {std::pair{"ACAD_PLOTSTYLENAME", "Normal"}, std::pair{"ACAD_MLINESTYLE", "Standard"}}) {
        const Entries* const entries = RootDictionary(dictionary);
        if (entries == nullptr) continue;
        for (const auto& [name, handle] : *entries)
            if (EqualsIgnoreCase(name, entry))
                handles.insert_or_assign(std::string(dictionary) + " " + entry, handle);
    }
}

void ObjectReader::Finish() {
    NameGroups();
    KeepHandles();
    for (const Layout& layout : mLayouts) {
        const auto block = mReading.blockOfRecord.find(layout.blockRecord);
        if (block == mReading.blockOfRecord.end()) continue;
        mReading.layoutOfBlock.emplace(block->second, layout.name);
        mReading.data.fileHandles.emplace("LAYOUT " + block->second, layout.handle);
    }
}

}  // namespace brenvik
