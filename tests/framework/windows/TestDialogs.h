// The dialogs of TestDialogs.rc and their items.
#pragma once

constexpr short allItems = 500;
constexpr short small = 520;
constexpr short resizable = 530;
constexpr short bare = 550;
constexpr short mixed = 560;
constexpr short large = 570;

// Items of the dialog `allItems`.
constexpr short integerField = 3;
constexpr short realField = 4;
constexpr short textField = 5;
constexpr short label = 6;
constexpr short check = 7;
constexpr short scrollBar = 10;
constexpr short palette = 11;
constexpr short popup = 12;
constexpr short live = 13;
constexpr short slider = 14;
constexpr short padLock = 15;
constexpr short dial = 16;
constexpr short bitmapButton = 17;
constexpr short tab = 18;
constexpr short userItem = 20;

/// An item of the dialog `mixed`: a list box, a control that the program does not have.
constexpr short listBox = 6;
