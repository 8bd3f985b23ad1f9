#!/usr/bin/env bash
# What scripts/check-names takes and what it refuses: check_names_test.sh CHECK.
set -euo pipefail
check=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
failed=0

# expect STATUS WORDS NAME, of the source on standard input
expect() {
  local status=0 output
  cat >"$folder/part.h"
  output=$("$check" "$folder/part.h" 2>&1) || status=$?
  if [ "$status" -ne "$1" ] || [[ $output != *"$2"* ]]; then
    echo "$3: status $status, said: $output" >&2
    failed=1
  fi
}

expect 0 '' 'takes names of every kind that are as they should be' <<'END'
#define odd_one(x) struct x {};
namespace brenvik {
/// class wrong_in_a_comment { int x; };
inline constexpr std::string_view ACCESS_KEY = "struct wrong { };";
constexpr double Small = 1e-5, Wide{0.5};
constexpr int Doubled(int value) { return value * 2; }
template <class T>
class Column final : public Base<T> {
  public:
    explicit Column(int rows) : mRows(rows != 0 ? rows : 1), mNext{nullptr} {}
    bool operator==(const Column&) const = default;
    int Rows() const { const int snake_case = 1; return snake_case; }
    int shown = 0, DimL = 0;

  protected:
    int held = 0;
    T mHeld{};

  private:
    enum class Kind { Plain };
    struct Cell {
        int row = 0, column = 0;
        std::function<int(int)> width = [](int one) { return one; };
    };
    static constexpr int MostRows = 12;
    void Grow(int by_much);
    std::map<int, std::vector<Cell>> mCells;
    int mRows, mFree[3] = {1, 2, 3};
    Column* mNext = nullptr;
};
void Use() { struct stat state {}; }
}  // namespace brenvik
END

expect 1 'part.h:4: the private member rows is not in mPascalCase' 'refuses a private member behind a constructor' <<'END'
class Column {
  public:
    explicit Column(int count) : rows(count == 0) {}
  private: int rows;
};
END
expect 1 'the private member width is' 'refuses the second of two' <<'END'
class Column {
    std::map<int, int> mRows{{1, 2}}, width;
};
END
expect 1 'the private member m_rows is' 'refuses another habit' <<'END'
struct Column {
  private:
    int m_rows = 0;
};
END
expect 1 'part.h:2: the constant kSmall is not in PascalCase' 'refuses a constant' <<'END'
namespace brenvik {
inline constexpr double kSmall = 1e-5;
}
END
expect 1 'the constant mostRows is' 'refuses a constant of a class' <<'END'
class Column {
    static constexpr int mostRows = 12;
};
END
expect 1 'the type column is not in PascalCase' 'refuses a type' <<'END'
enum class column { One };
END
expect 1 'the field first_row is not in camelCase' 'refuses a field' <<'END'
struct Column {
    int first_row = 0;
};
END

cp "$folder/part.h" "$folder/PartOne.h"
if "$check" "$folder/PartOne.h" >"$folder/said" 2>&1 || ! grep -q 'not in lower_snake' "$folder/said"; then
  echo "the check took the name of a file in another form" >&2
  failed=1
fi
exit $failed
