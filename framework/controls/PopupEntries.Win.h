// The entries of a popup control: a menu of the resources, to which the dialog adds.
//
// Entries are counted from 1 here, positions in messages from 0.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "framework/drawing/GdiObject.Win.h"
#include "framework/drawing/ScreenScale.h"

/// A picture beside an entry, by the entry's command id.
struct EntryPicture {
    UINT id;
    /// Scaled to a check mark, as the menu shows it.
    GdiObject mark;
    /// For the box.
    GdiObject picture;
};

class PopupEntries {
  public:
    PopupEntries() = default;
    PopupEntries(const PopupEntries&) = delete;
    PopupEntries& operator=(const PopupEntries&) = delete;
    ~PopupEntries();

    /// Loads the control's menu. Returns false if there is none.
    bool Load(HWND control);

    HMENU Menu() const { return menu; }
    int Count() const { return GetMenuItemCount(menu); }
    /// Enabled, and neither a separator nor a submenu.
    bool IsSelectable(int entry) const;
    /// Returns the entry with a command id; 0 if there is none.
    int WithId(UINT id) const;
    /// As it was inserted: an ampersand is a character like others.
    std::string Text(int entry) const;

    bool HavePictures() const { return !pictures.empty(); }
    /// Null for an entry without one.
    HBITMAP Picture(int entry) const;

    /// Inserts before a position, or at the end for one that is not there. Returns the position of
    /// the new entry.
    LRESULT Insert(int position, const char* text);
    /// Returns the count that is left, or CB_ERR for a position that is not there.
    LRESULT Delete(int position);
    /// Reads a text into a buffer of textBufferSize. Returns its length, or CB_ERR.
    LRESULT ReadText(int position, char* text) const;
    /// `data` 0 and 1 disable and enable the entry; any other value is a picture's resource id.
    /// Returns 0 or CB_ERR.
    LRESULT SetData(int position, LPARAM data);

  private:
    UINT IdOf(int entry) const { return GetMenuItemID(menu, entry - 1); }
    bool IsPosition(int position) const { return position >= 0 && position < Count(); }
    UINT NewId() const;
    void LayOutColumns();
    bool SetPicture(int position, int resourceId);

    HMENU resource = nullptr;
    HMENU menu = nullptr;
    int entriesInColumn = 0;
    ScreenScale scale;
    std::vector<EntryPicture> pictures;
};
