// The state of the texture that an ApplyDialog shows.
#pragma once

/// Starts as opened: the texture is as it was before the dialog. Apply makes it the result of the
/// controls, any change of a control takes that back.
class ApplyState {
  public:
    /// The texture shows the result of the present controls.
    bool IsApplied() const { return isApplied; }
    void SetApplied() { isApplied = true; }
    /// Notes that a control has changed. Returns whether the texture showed a result, which then
    /// has to be taken back.
    bool MarkChanged() {
        const bool showedResult = isApplied;
        isApplied = false;
        return showedResult;
    }
    /// Whether OK still has to run the operation.
    bool IsRunOwed() const { return !isApplied; }

    /// The Apply button runs on top of the last result.
    bool IsAgain() const { return isAgain; }
    /// `modifiers` are the keys held down: Control alone asks for it. True if the button's text has
    /// to change.
    bool FollowKeys(int modifiers) {
        constexpr int controlAlone = 1;
        const bool before = isAgain;
        isAgain = modifiers == controlAlone;
        return isAgain != before;
    }

  private:
    bool isApplied = false;
    bool isAgain = false;
};
