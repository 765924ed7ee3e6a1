// The two small classes that keep the user informed during long work.
//
// Declared here, below everything that uses them; defined in shell/PhotoshopUtilities.
#pragma once

/// Where ShowClass draws its progress: the editor.
class ProgressTarget {
  public:
    /// 0 to 100; values out of range occur, and the target has to cope with them.
    virtual void DrawProgress(short percent) = 0;

  protected:
    ~ProgressTarget() = default;
};

/// Sets the wait cursor, but works at most every 250 ms however often it is called.
void BusyTick();

/// A busy cursor for the lifetime of the object. Without effect while no editor is open.
class CursorClass {
  public:
    CursorClass();
    CursorClass(const CursorClass&) = delete;
    CursorClass& operator=(const CursorClass&) = delete;
    virtual ~CursorClass();
    void Tick();

    /// The open editor; null without one.
    static ProgressTarget* target;
};

/// Progress of one long operation. Silent while no editor stands.
class ShowClass {
  public:
    explicit ShowClass(short newTotal);
    ShowClass(const ShowClass&) = delete;
    ShowClass& operator=(const ShowClass&) = delete;
    virtual ~ShowClass();
    /// Always returns false, "go on": nothing in the program stops an operation half way.
    bool Report(short value);

    short total;
    short current;

    /// The open editor; null without one.
    static ProgressTarget* target;
};
