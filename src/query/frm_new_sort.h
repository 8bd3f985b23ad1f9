// The sort dialog: columns to sort by with their directions, and columns to group by. Its OK button makes one
// statement over the part table from them, hands it to the grid, and shows or hides the grid's columns. Other
// modules press its buttons without showing it, so that the present sort and grouping are built anew.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "forms/form.h"

namespace brenvik {

class frmNewSort : public Form {
  public:
    frmNewSort();

    /// Sets `Grouped`, and refills `List1`: the columns of the relation, or the ticked ones while grouped.
    void LoadListBoxes();
    /// Moves the columns of the session's `SortFields` from `List1` to `List2`, in the order of `List1`: the
    /// order in which the user chose them is lost. Ends silently on a failure.
    void SetSelectedItems();
    /// The row of `SortFields` that a caption's column stands in, or -1.
    int InSelectedFields(std::string_view columnCaption) const;
    /// Makes `SortFields` from `List2`. Ends silently on a failure, with the rows made so far.
    void PrepSQL();
    /// The statement of the present choices; sets the session's `SortClause` and `GroupFields`. Blank on a
    /// failure, which isn't shown.
    std::string BuildSQL();
    /// Ticks the boxes of a list of columns parted by commas; their case doesn't matter.
    void check_names(std::string_view groupFields);

    /// Presses a button by code: an unseen dialog is loaded first, with its whole opening.
    void PressByCode(std::string_view button);
    /// Whether the engine refused the statement of the last OK.
    bool StatementRefused() const { return mStatementRefused; }

    /// Some box is ticked.
    bool Grouped = false;
    /// Boxes are being set by code: their clicks do nothing.
    bool Loading = false;

    /// The first box is never seen nor visited; the list of boxes begins with the second one.
    static constexpr std::size_t BoxCount = 19;
    ListControl& List1;
    ListControl& List2;
    std::array<CheckControl*, BoxCount> Check1{};

  protected:
    void OnLoad() override;

  private:
    void AddSortControls();
    void AddGroupControls();
    void AddButton(const char* name, const char* buttonCaption, void (frmNewSort::*handler)());
    void AddOne();
    void AddAll();
    void RemoveOne();
    void RemoveAll();
    void ToggleDirection();
    void BoxClicked(const CheckControl& box);
    void OfferAllRows();
    void OfferTickedBoxes();
    void SetAllBoxes(int value);
    void SelectAll();
    void DeselectAll();
    bool AnyBoxTicked() const;
    /// All boxes but the first.
    std::span<CheckControl* const> ListedBoxes() const { return std::span(Check1).subspan(1); }
    std::string OrderBy();
    std::string GroupList() const;
    void Confirm();
    void ShowColumns(std::string_view statement);

    bool mStatementRefused = false;
};

}  // namespace brenvik
