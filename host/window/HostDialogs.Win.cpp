#include "host/window/HostDialogs.Win.h"

#include <cmath>
#include <cstdlib>

#include "base/Rectangles.h"
#include "host/command/Version.h"
#include "host/window/NativeWindow.Win.h"
#include "host/window/WindowResources.h"

namespace host {

namespace {

/// A modal dialog from the resources.
class Dialog {
  public:
    Dialog() = default;
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    /// Returns whether the user ended it with OK.
    bool Run(HWND owner, int id) {
        return DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), owner, Procedure,
                               reinterpret_cast<LPARAM>(this)) == IDOK;
    }

  protected:
    ~Dialog() = default;
    virtual void Fill() = 0;
    /// Reads the controls; false keeps the dialog open.
    virtual bool Accept() { return true; }

    HWND Window() const { return window; }
    void SetText(int control, const std::string& text) {
        SetDlgItemTextW(window, control, Wide(text).c_str());
    }
    std::string Text(int control) const {
        wchar_t text[64];
        GetDlgItemTextW(window, control, text, 64);
        return Utf8(text);
    }
    /// Says what is wrong and puts the user into the control.
    void Refuse(int control, const std::string& text) {
        ShowError(window, text);
        SetFocus(GetDlgItem(window, control));
        SendDlgItemMessageW(window, control, EM_SETSEL, 0, -1);
    }

  private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_INITDIALOG) {
            SetWindowLongPtrW(window, DWLP_USER, lParam);
            auto* dialog = reinterpret_cast<Dialog*>(lParam);
            dialog->window = window;
            dialog->Fill();
            return TRUE;
        }
        auto* dialog = reinterpret_cast<Dialog*>(GetWindowLongPtrW(window, DWLP_USER));
        if (message != WM_COMMAND || dialog == nullptr) {
            return FALSE;
        }
        const int control = LOWORD(wParam);
        if (control == IDCANCEL || (control == IDOK && dialog->Accept())) {
            EndDialog(window, control);
        }
        return control == IDCANCEL || control == IDOK;
    }

    HWND window = nullptr;
};

class BoundsDialog final : public Dialog {
  public:
    BoundsDialog(const hostapi::VRect& newBounds, Size newPicture)
        : bounds(newBounds), picture(newPicture) {}

    const hostapi::VRect& Bounds() const { return bounds; }

  private:
    void Fill() override {
        Put(CONTROL_LEFT, bounds.left);
        Put(CONTROL_TOP, bounds.top);
        Put(CONTROL_WIDTH, Width(bounds));
        Put(CONTROL_HEIGHT, Height(bounds));
        SetText(CONTROL_HINT, "The picture is " + PictureSize() + " pixels.");
    }

    bool Accept() override {
        int left = 0, top = 0, width = 0, height = 0;
        const bool areNumbers = Get(CONTROL_LEFT, left) && Get(CONTROL_TOP, top) &&
                                Get(CONTROL_WIDTH, width) && Get(CONTROL_HEIGHT, height);
        if (!areNumbers) {
            return false;
        }
        const hostapi::VRect wanted{top, left, top + height, left + width};
        if (IsEmpty(wanted) || !Contains({0, 0, picture.height, picture.width}, wanted)) {
            Refuse(CONTROL_LEFT, "The selection must lie inside the picture, which is " +
                                     PictureSize() + " pixels, and hold a pixel at least.");
            return false;
        }
        bounds = wanted;
        return true;
    }

    void Put(int control, int value) { SetText(control, std::to_string(value)); }

    bool Get(int control, int& value) {
        constexpr long most = 30000;
        const std::string text = Text(control);
        char* end = nullptr;
        const long number = std::strtol(text.c_str(), &end, 10);
        if (text.empty() || *end != '\0' || number < 0 || number > most) {
            Refuse(control, "Enter a whole number of pixels, 0 or more.");
            return false;
        }
        value = static_cast<int>(number);
        return true;
    }

    std::string PictureSize() const {
        return std::to_string(picture.width) + " \u00D7 " + std::to_string(picture.height);
    }

    hostapi::VRect bounds;
    Size picture;
};

class FeatherDialog final : public Dialog {
  public:
    explicit FeatherDialog(double newFeather) : feather(newFeather) {}

    double Feather() const { return feather; }

  private:
    void Fill() override {
        std::string text = std::to_string(feather);
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') {
            text.pop_back();
        }
        SetText(CONTROL_FEATHER, text);
    }

    bool Accept() override {
        const std::string text = Text(CONTROL_FEATHER);
        char* end = nullptr;
        const double number = std::strtod(text.c_str(), &end);
        if (text.empty() || *end != '\0' || !(number >= 0.0 && number <= largestFeather)) {
            Refuse(CONTROL_FEATHER, "Enter a number of pixels from 0 to 1000.");
            return false;
        }
        feather = number;
        return true;
    }

    double feather;
};

class FaultsDialog final : public Dialog {
  public:
    FaultsDialog(const std::string& filterName, const std::vector<std::string>& faults) {
        heading = "The host caught " + filterName + " at this:";
        for (const std::string& fault : faults) {
            lines += (lines.empty() ? "" : "\r\n") + fault;
        }
    }

  private:
    void Fill() override {
        SetText(CONTROL_HEADING, heading);
        SetText(CONTROL_FAULTS, lines);
    }

    std::string heading;
    std::string lines;
};

}  // namespace

std::optional<hostapi::VRect> AskForBounds(HWND owner, const hostapi::VRect& bounds, Size picture) {
    BoundsDialog dialog(bounds, picture);
    return dialog.Run(owner, DIALOG_BOUNDS) ? std::optional(dialog.Bounds()) : std::nullopt;
}

std::optional<double> AskForFeather(HWND owner, double feather) {
    FeatherDialog dialog(feather);
    return dialog.Run(owner, DIALOG_FEATHER) ? std::optional(dialog.Feather()) : std::nullopt;
}

void ShowFaults(HWND owner, const std::string& filterName, const std::vector<std::string>& faults) {
    FaultsDialog(filterName, faults).Run(owner, DIALOG_FAULTS);
}

void ShowAbout(HWND owner) {
    const std::wstring text =
        L"Zandermolite Host " + Wide(versionText) +
        L"\n\nA small host for filter plug-ins: it opens a picture, lets you select a part of "
        L"it, and runs the filters of the Filter menu there.";
    MSGBOXPARAMSW box{};
    box.cbSize = sizeof box;
    box.hwndOwner = owner;
    box.hInstance = GetModuleHandleW(nullptr);
    box.lpszText = text.c_str();
    box.lpszCaption = L"About Zandermolite Host";
    box.dwStyle = MB_OK | MB_USERICON;
    box.lpszIcon = MAKEINTRESOURCEW(ICON_PROGRAM);
    MessageBoxIndirectW(&box);
}

}  // namespace host
