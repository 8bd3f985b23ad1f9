// Groups of kept texts, and the forms in which records refer to each other.
#include "drafting_host/dxf/data/kept_text.h"

#include <array>
#include <charconv>

#include "base/handle_text.h"
#include "base/trimmed.h"

namespace brenvik {
std::string_view WithoutBlanks(std::string_view text) { return Trimmed(text, " "); }

namespace {

constexpr std::string_view LineEnd = "\r\n";

std::string_view TakeLine(std::string_view& rest) {
    const std::size_t end = rest.find('\n');
    const std::string_view line = rest.substr(0, end == std::string_view::npos ? end : end - 1);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return line;
}

/// Goes through one record's groups and leaves out or changes what refers to something gone.
class Mender {
  public:
    Mender(std::string_view kind, std::string_view groups, const IsGoneTest& isGone)
        : mKind(kind), mWalk(groups), mIsGone(isGone) {
        mResult.reserve(groups.size());
    }

    std::string Run() {
        while (mWalk.Next()) Take();
        DropHeldBack();
        return std::move(mResult);
    }

  private:
    bool IsGone() const { return IsReference(mWalk.Code()) && mIsGone(mWalk.Handle()); }

    void Take() {
        const int code = mWalk.Code();
        if (code == 0) mKind = WithoutBlanks(mWalk.Value());
        if (code == 102) return TakeBracket();
        if (mInBrackets) {
            if (IsGone()) return;
            mHeldBack += mWalk.Text();
            mHasMember = true;
            return;
        }
        if (IsDictionary()) return TakeOfDictionary();
        if (mKind == "SORTENTSTABLE") return TakeOfOrder();
        if (mKind == "HATCH") return TakeOfHatch();
        if (!IsGone())
            mResult += mWalk.Text();
        else if (mKind != "GROUP")
            AppendGroup(mResult, code, "0");
    }

    bool IsDictionary() const { return mKind == "DICTIONARY" || mKind == "ACDBDICTIONARYWDFLT"; }

    // A list without members is no list.
    void TakeBracket() {
        if (WithoutBlanks(mWalk.Value()).starts_with('{')) {
            DropHeldBack();
            mInBrackets = true;
            mHasMember = false;
            mHeldBack = mWalk.Text();
            return;
        }
        if (mInBrackets && mHasMember) mResult += mHeldBack;
        if (!mInBrackets || mHasMember) mResult += mWalk.Text();
        mHeldBack.clear();
        mInBrackets = false;
    }

    void TakeOfDictionary() {
        const int code = mWalk.Code();
        if (code == 3) {
            DropHeldBack();
            mHeldBack = mWalk.Text();
            return;
        }
        if ((code == 350 || code == 360) && !mHeldBack.empty()) {
            if (!IsGone()) mResult.append(mHeldBack).append(mWalk.Text());
            mHeldBack.clear();
            return;
        }
        Plain();
    }

    // Pairs of an entity and the handle by which it is sorted; the record's own handle stands in front.
    void TakeOfOrder() {
        if (mWalk.Code() == 331) {
            mIsPairGone = IsGone();
            if (!mIsPairGone) mResult += mWalk.Text();
            return;
        }
        if (mWalk.Code() == 5 && mIsPairGone) {
            mIsPairGone = false;
            return;
        }
        Plain();
    }

    // A boundary path gives the number of the objects that it was made of, and then these.
    void TakeOfHatch() {
        if (mWalk.Code() == 97) {
            EndSources();
            mSourceHead = mWalk.Text();
            return;
        }
        if (!mSourceHead.empty() && mWalk.Code() == 330) {
            if (IsGone()) {
                mHasLostSource = true;
            } else {
                ++mSourceCount;
                mSources += mWalk.Text();
            }
            return;
        }
        EndSources();
        Plain();
    }

    void EndSources() {
        if (mHasLostSource)
            AppendGroup(mResult, 97, std::to_string(mSourceCount));
        else
            mResult += mSourceHead;
        mResult += mSources;
        mSources.clear();
        mSourceHead.clear();
        mSourceCount = 0;
        mHasLostSource = false;
    }

    void Plain() {
        if (IsGone())
            AppendGroup(mResult, mWalk.Code(), "0");
        else
            mResult += mWalk.Text();
    }

    // What was held back has no end of its own.
    void DropHeldBack() {
        EndSources();
        mResult += mHeldBack;
        mHeldBack.clear();
    }

    std::string_view mKind;
    GroupWalk mWalk;
    const IsGoneTest& mIsGone;
    std::string mResult, mHeldBack, mSourceHead, mSources;
    int mSourceCount = 0;
    bool mInBrackets = false, mHasMember = false, mIsPairGone = false, mHasLostSource = false;
};

}  // namespace

void AppendGroup(std::string& text, int code, std::string_view value) {
    std::array<char, 12> digits;
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), code);
    const auto count = static_cast<std::size_t>(written.ptr - digits.data());
    if (count < 3) text.append(3 - count, ' ');
    text.append(digits.data(), count);
    text += LineEnd;
    text += value;
    text += LineEnd;
}

bool GroupWalk::Next() {
    if (mRest.empty()) return false;
    const std::string_view all = mRest;
    const std::string_view code = WithoutBlanks(TakeLine(mRest));
    mCode = 0;
    std::from_chars(code.data(), code.data() + code.size(), mCode);
    mValue = TakeLine(mRest);
    mText = all.substr(0, all.size() - mRest.size());
    return true;
}

HandleValue GroupWalk::Handle() const {
    const std::string_view text = WithoutBlanks(mValue);
    HandleValue handle = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), handle, 16);
    return read.ec == std::errc{} && read.ptr == text.data() + text.size() ? handle : 0;
}

namespace {

std::optional<std::int64_t> IntegerIn(const GroupWalk& walk) {
    const std::string_view text = WithoutBlanks(walk.Value());
    std::int64_t number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    return read.ec == std::errc{} ? std::optional(number) : std::nullopt;
}

/// The highest of four bytes marks a value as the entity's own; by layer and by block are others.
constexpr std::int64_t OwnOpacity = 0x02000000, OpacityByBlock = 0x01000000;

std::optional<std::uint8_t> OpacityOf(std::int64_t value) {
    constexpr std::int64_t oneByte = 0xFF;
    if ((value & ~oneByte) != OwnOpacity) return std::nullopt;
    return static_cast<std::uint8_t>(value & oneByte);
}

}  // namespace

std::optional<std::uint32_t> TrueColorIn(std::string_view groups) {
    constexpr int trueColor = 420;
    constexpr std::uint32_t threeBytes = 0xFFFFFF;
    GroupWalk walk(groups);
    while (walk.Next()) {
        if (walk.Code() != trueColor) continue;
        if (const auto color = IntegerIn(walk)) return static_cast<std::uint32_t>(*color) & threeBytes;
    }
    return std::nullopt;
}

namespace {

std::optional<std::int64_t> TransparencyIn(std::string_view groups) {
    constexpr int transparency = 440;
    GroupWalk walk(groups);
    while (walk.Next())
        if (walk.Code() == transparency) return IntegerIn(walk);
    return std::nullopt;
}

}  // namespace

std::optional<std::uint8_t> OpacityIn(std::string_view groups) {
    const auto value = TransparencyIn(groups);
    return value ? OpacityOf(*value) : std::nullopt;
}

bool IsOpacityByBlock(std::string_view groups) { return TransparencyIn(groups) == OpacityByBlock; }

std::optional<std::uint8_t> OpacityOfLayerIn(std::string_view groups) {
    constexpr int application = 1001, number = 1071;
    bool isInside = false;
    GroupWalk walk(groups);
    while (walk.Next()) {
        if (walk.Code() == application) isInside = WithoutBlanks(walk.Value()) == "AcCmTransparency";
        if (!isInside || walk.Code() != number) continue;
        if (const auto value = IntegerIn(walk)) return OpacityOf(*value);
    }
    return std::nullopt;
}

std::string GroupOfOpacity(std::uint8_t opacity) {
    std::string group;
    AppendGroup(group, 440, std::to_string(OwnOpacity | opacity));
    return group;
}

Kept<KeptGroups> GroupsOfTrueColor(std::uint32_t color, bool isLayer) {
    KeptGroups kept;
    AppendGroup(isLayer ? kept.own : kept.common, 420, std::to_string(color));
    return {std::make_shared<const KeptGroups>(std::move(kept))};
}

bool IsReference(int code) {
    return (code >= 320 && code < 370) || (code >= 390 && code < 400) || code == 480 || code == 481 ||
           code == 1005;
}

std::string MendedGroups(std::string_view kind, std::string_view groups, const IsGoneTest& isGone) {
    return Mender(kind, groups, isGone).Run();
}

std::string WithOwner(std::string_view groups, HandleValue owner, HandleValue own) {
    std::string result;
    result.reserve(groups.size() + 16);
    bool inBrackets = false, isHead = true, hasOwner = false;
    GroupWalk walk(groups);
    while (walk.Next()) {
        const int code = walk.Code();
        // Before release 2000 records name no owner.
        if (code == 100 && isHead && !hasOwner) {
            AppendGroup(result, 330, HandleToText(owner));
            hasOwner = true;
        }
        if (code == 100) isHead = false;
        if (code == 102) inBrackets = WithoutBlanks(walk.Value()).starts_with('{');
        if (isHead && !inBrackets && code == 330) {
            hasOwner = true;
            AppendGroup(result, code, HandleToText(owner));
        } else if (isHead && !inBrackets && own != 0 && (code == 5 || code == 105)) {
            AppendGroup(result, code, HandleToText(own));
        } else {
            result += walk.Text();
        }
    }
    return result;
}

void ForEachReference(std::string_view groups, const std::function<void(HandleValue)>& visit) {
    GroupWalk walk(groups);
    while (walk.Next())
        if (IsReference(walk.Code())) visit(walk.Handle());
}

}  // namespace brenvik
