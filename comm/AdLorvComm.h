#pragma once

#include "containers/ox_array.h"
#include "framework/collections/string_array.h"
#include "framework/drawing/geometry.h"
#include "framework/native/export.h"
#include "framework/native/native_types.h"
#include "framework/native/window_types.h"
#include "framework/text/cstring.h"

class CComboBox;
class CListBox;
class CWnd;

// Text and number helpers of the suite: lists of texts, numbers as text, tests of what a text holds, files
// and the suite's windows.
//
// Units: lengths, positions and indices count from 0, lengths of texts in 16-bit units. Digits are 0 to 9 and
//   letters A to Z and a to z: a Chinese character or a full-width digit is neither.
// Result: where a function gives bool and has an output, the output is untouched when it gives false,
//   except where its line says otherwise.
// No state, no locale: any thread that owns the arguments, but for the windows, which are asked for on the
//   user-interface thread. Nothing is kept beyond a call. An argument may be an element of the list it is
//   used with.

// `value` as the shortest text of at most `digits` decimals, into `out` of `size` units.
//
// Form: the fewest decimals that give the value back to within half a unit of the last permitted one; all
//   of them, zeros included, where none does. With `fixed` at least `digits` decimals. See
//   comm/short_decimal.h for values out of the ordinary.
// Edges: a text of `size` units or more is cut to `size` and then has NO terminator: give room for one (64
//   is enough for every quantity). `size` below 1 or a null `out` writes nothing.
// Result: whether the text has at least one character.
//
//   Double2String(1.5, 3, out, false, 64)  gives "1.5", with fixed digits "1.500"
COMM_LORV_API bool Double2String(const double& value, const int& digits, TCHAR* out, bool fixed, int size);

// Whether a value obeys a rule such as "<=500", ">C30" or "C20~C40".
//
// Both are compared as TEXTS without letter case, never as numbers, and the operand that follows the rule's
// operator takes in the operator and as many characters before it as it is long. The operators "<=", "<",
// ">=", ">" and "~" are tried in this order, each that the rule holds; the first that is satisfied decides.
//
//   IsMeasureStr(_T("600"), _T("<=500"))  gives true: "6" sorts below "<"
COMM_LORV_API bool IsMeasureStr(const CString& value, const CString& rule);

// How alike two texts are, by the runs of characters that they share.
//
// Units: bytes of the narrow code page: a Chinese character counts two. Letter case does not count.
// For each character of `first` the first match in `second` is taken, behind where the last one began, and
// scores twice its length, and 1 more for each of the texts that it covers whole. With `sum_mode` not 0 the
// scores add up, so a long common run scores at each of its characters; else the best one is the result. A
// comma that is compared on the way ends the adding up for the rest: a list is scored by its best piece.
// Edges: a null text is empty; an empty one scores 0. For many texts use lorv::RankMatches
//   (comm/match_score.h), which gives the same scores.
//
//   GetMaxMatch(_T("ABC"), _T("abc"), 0)  gives 8
COMM_LORV_API int GetMaxMatch(LPCTSTR first, LPCTSTR second, int sum_mode);

// Deletes a file, or a folder with all it holds, without a question or a message: into the recycle bin, or
// for good. The path is cut to 260 characters.
// Result: 0 for success, else the shell's number.
COMM_LORV_API int RecycleFile(const CString& path, bool delete_for_good);

// Parts a path: `directory` gets the drive and the folders with the closing separator, the result is the
// name without its extension, which begins at the last point. "\" and "/" both separate. A null path counts
// as empty.
//
//   "C:\a\b.txt" gives "b" and "C:\a\"
COMM_LORV_API CString Splitfilename(LPCTSTR path, CString& directory);

class COMM_LORV_API CAdLorvComm {
 public:
  CAdLorvComm() = delete;

  // The suite's second kind of text list. Whatever takes a list behaves alike on both kinds.
  using TextList = OxArray<CString, OxVector<CString>>;

  // ---- Lists of texts ----

  // Splits a text at a character. The list is emptied first and EMPTY PIECES STAY, but for one behind the
  // last separator. Result: the pieces stored; the empty text gives 0 and leaves the list as it was.
  //
  //   "a;;b;" at ";" gives 3 pieces: "a", "", "b"
  static int ParseStringToArray(const CString& text, CStringArray& list, TCHAR separator);
  static int ParseStringToArray(const CString& text, TextList& list, TCHAR separator);

  // Splits a text at a text. With a separator of ONE character this is ParseStringToArray. With a longer
  // one pieces are APPENDED to what the list holds, and empty ones are dropped; a text without the
  // separator is appended whole. An empty separator occurs nowhere.
  // Result: the pieces that this call stored; 0 for the empty text.
  //
  //   "a;;;;b" at ";;" appends 2 pieces: "a", "b"
  static int DivideString(const CString& text, const CString& separator, CStringArray& list);
  static int DivideString(const CString& text, const CString& separator, TextList& list);

  // Joins a list: each element, blanks trimmed at both ends, and behind EACH the separator.
  // Result: the count of elements; `text` is empty for an empty list.
  //
  //   " a ", "b" with "," gives "a,b,"
  static int ConnectString(CString& text, const CString& separator, const CStringArray& list);
  static int ConnectString(CString& text, const CString& separator, const TextList& list);

  // Joins a list with separators only BETWEEN elements, which are not trimmed of blanks. The characters
  // "#", "$", "%" and "&" are lost at both ends of the result, and so are empty elements there with their
  // separators. Always true. A null separator counts as the empty text.
  //
  //   "a", "b" with "," gives "a,b"; "#a", "b" gives the same
  static bool AssembleStringArr(CString& text, LPCTSTR separator, const CStringArray& list);
  static bool AssembleStringArr(CString& text, LPCTSTR separator, const TextList& list);

  // The first piece of DivideString: it may be empty for a separator of one character, and never is for a
  // longer one. The empty text when there is no piece.
  static CString GetFirstDiviedString(const CString& text, const CString& separator);

  // Sets every element equal to `old_text` (letter case counts) from `first` on to `new_text`. Result: how
  // many were changed. A negative `first` counts as 0.
  static int ReplaceStringInArr(const CString& new_text, const CString& old_text, CStringArray& list,
                                int first);

  // Whether a text is in a list; `index` is that of the first equal element, else -1.
  static bool IsStringInArray(const CString& text, const CStringArray& list, int& index, bool case_sensitive);
  static bool IsStringInArray(const CString& text, const TextList& list, int& index, bool case_sensitive);

  // Looks for a text and makes one edit at most: removes the element found, or appends the missing text.
  // Result: whether it was there before.
  static bool ModifyIsStringInArray(const CString& text, CStringArray& list, bool remove_found,
                                    bool add_missing, bool case_sensitive);
  static bool ModifyIsStringInArray(const CString& text, TextList& list, bool remove_found, bool add_missing,
                                    bool case_sensitive);

  // Turns a list round.
  static void ReverseStrArray(CStringArray& list);

  // Writes a list to a text file, a line for each element, in the narrow code page; what has no code there
  // becomes "?". Lines end in a carriage return and a line feed on every system.
  // Result: false when the file exists and is to be kept, and when it cannot be written.
  static bool WriteStringArrayToTextFile(LPCTSTR path, const CStringArray& list, bool keep_existing);

  // Reads the lines of such a file into a list, blanks at both ends trimmed; empty lines never, and lines
  // that begin with "//" or ";" not if `skip_comments`. Line ends of both systems are understood.
  // Result: false when the file does not open, and the list is as it was; false too when a line has more
  //   than 1022 bytes, and the list is empty: it is all or nothing.
  static bool ReadTextFileToStringArray(LPCTSTR path, CStringArray& list, bool skip_comments);

  // ---- Numbers and text ----

  // As the free function of this name.
  static bool Double2String(const double& value, const int& digits, TCHAR* out, bool fixed, int size);

  // Whether a text looks like a number: digits and points, with one "-" at most, in front. The points are
  // not counted, so "1.2.3" and "-." pass. A single character must be a digit; the empty text fails.
  static bool isNumber(const CString& text);

  // Whether a text is a positive whole number. CHANGES ITS ARGUMENT: leading zeros are cut off, whatever the
  // result, and "0" itself is refused.
  //
  //   "007" becomes "7" and gives true
  static bool isValidNumberStr(CString& text);

  // The first number in a mixed text.
  //
  // Before the first sign or point everything that is no digit is passed over, between digits too; behind
  // it the number ends at the first character that cannot belong to it. A sign or point alone reads as 0.
  // Result: false, and `value` untouched, when there is no such character.
  //
  //   "abc12.5mm" gives 12.5, "1a2" gives 12, "12-3" gives 12
  static bool GetDoubleValueFromString(const CString& text, double& value);

  // Whether a text holds a digit, or a letter.
  static bool haveNumber(const CString& text);
  static bool haveAlphabeticLetter(const CString& text);

  // The first run of digits as a number; beyond 32 bits the greatest. False when there is no digit.
  //
  //   "KL12-3" gives 12
  static bool GetTheNumber(const CString& text, int& number);

  // Cuts zeros at the end behind the first point, and the point itself when nothing is left behind it.
  // Result: false only for the empty text.
  //
  //   "1.500" becomes "1.5", "2.000" becomes "2", "100" stays
  static bool RemoveMoreZeroAferPoint(CString& text);

  // Parts a component's code into a head and the number at its end. A closing "(...)" is left out first.
  // A code that does not end in a digit, and one of digits alone, is all head.
  // Result: false when nothing is left to part. The outputs may be the code itself.
  //
  //   "KL12(3)" gives "KL" and "12"
  static bool DivideBHByEndNumber(const CString& code, CString& head, CString& end_number);

  // The whole number that `value` is nearer to than `tolerance`, the upper neighbour first; a value near
  // none is cut towards zero. What does not fit in 32 bits counts as the lowest number.
  //
  //   (2.9999, 0.001) gives 3, (2.5, 0.001) gives 2
  static int GetCLosetInteger(double value, double tolerance);

  // For sort routines: the first int less the second. A difference beyond 32 bits wraps.
  static int compareInt(const void* a, const void* b);

  // ---- Names ----

  // What IsValidStr finds. Any other value is no finding and has the empty text.
  enum emStrError : int { emStrValid = 1, emStrIllegalChar = 2, emStrTooLong = 3, emStrHasBlank = 4 };

  // Whether a text may be a name of fewer than `limit` characters.
  //
  // Too long counts before all else; then the first of ' \ " % or, where blanks are not allowed, a blank
  // decides. A null text is valid.
  //
  //   ("a'b c", 10, false) gives emStrIllegalChar, ("abcdefghij", 10, false) gives emStrTooLong
  static emStrError IsValidStr(LPCTSTR text, int limit, bool blanks_allowed);

  // A finding in the user's words; constant, never null.
  static LPCTSTR GetErrorInfo(emStrError error);

  // Takes \ ' " % and / out of a text. A BLANK IS NOTICED BUT STAYS, and takes every ' with it.
  // Result: whether any of the six was there.
  //
  //   "a b'c" becomes "a bc"; "a b" stays and gives true too
  static bool RemoveInvaildChar(CString& text);

  // A free name made of `head` and a number: the lowest number from 1 that follows the run of used ones.
  //
  // A name counts when its head is the same without letter case; one without a number counts as 0. With no
  // such name the result is the head alone, or the head and 1 where a number is asked for always. The result
  // may be `head`'s own text. Gives true always.
  //
  //   "KL" with the names "KL", "KL1", "KL2" gives "KL3"; with "KL2" alone it gives "KL1"
  static bool GetValidNewNamebyHead(LPCTSTR head, const CStringArray& names, CString& result,
                                    bool always_number);

  // The order by length of the suite's sorting: true when `a` is the longer, else when it sorts above `b` by
  // character code. So the length wins in one direction only: "b" is less than "ab" and "ab" less than "b".
  static bool LessTStringByLenth(const CString& a, const CString& b);
  // The plain opposite: of two equal texts "less" is false and "more" true.
  static bool MoreTStringByLenth(const CString& a, const CString& b);

  // ---- Files and folders ----

  // Sees to it that a folder is there: true when it is, or could be made. Makes ONE level: false when the
  // folder above is missing. The empty path is the top folder of the disk.
  static bool CreatePath(LPCTSTR path);

  // Opens a text file in the system's plain viewer and does not wait for it; whether it was started.
  static bool CreateNotepadProcess(LPCTSTR path);

  // The names, without their folder, of the files in a folder that fit a pattern of "*" and "?"; no folders.
  // The list is emptied first. Letters A to Z become small ones if asked. Result: the count of names.
  //
  //   GetPathFile(_T("C:\\p"), _T("*.dat"), names, true)  finds "wall.dat" for "C:\p\WALL.DAT"
  static __int64 GetPathFile(const CString& directory, const CString& pattern, CStringArray& list,
                             bool lower_case);
  static __int64 GetPathFile(const CString& directory, const CString& pattern, TextList& list,
                             bool lower_case);

  // ---- Places of windows ----

  // Reads a window's place from "left,top,right,bottom" or the same with a show state behind, which is -1
  // where there is none.
  //
  // Refused are: other counts of numbers; a rectangle with nothing in it; one that the desktop shows nothing
  //   of, or whose title bar it does not show: the top may lie 18 pixels above the desktop and must lie 10
  //   above its bottom. Each number is read as far as it is one, so "x" is 0.
  // Result: whether `rect` was set. The show state is set even if not.
  //
  //   "10,10,100,100,3" gives that rectangle and 3; "10,10,5,100" gives false
  static bool WndPosFromStringToRect(const CString& text, CRect& rect, int& show_state);
  // The same over a desktop of this rectangle.
  static bool WndPosFromStringToRect(const CString& text, CRect& rect, int& show_state, const RECT& desktop);
  // Writes the five numbers.
  static void WndPosFromRectToString(CString& text, const CRect& rect, int show_state);

  // ---- Windows of the thread ----
  //
  // They look among the top-level windows of the calling thread, the topmost first and hidden ones too, and
  // find the first that fits. Titles are compared by letter case, and a title fits that CONTAINS the text:
  // every title contains the empty text. A dialog is a window of the system's dialog class. Where windows
  // cannot be had at all there are none. A window found by pointer is the caller's only until it handles
  // messages again.

  // The first dialog whose title contains a text, or null.
  static CWnd* GetWindowExist(const CString& title);
  // Whether there is such a dialog, which is shown then if it was hidden.
  static bool IsWindowTitleExist(const CString& title);
  // The first window of a run-time class, letter case aside, or null. Windows without an object of ours are
  // of class "CWnd".
  //
  //   IsWindowClassExist(_T("cdlgreback"))  finds the restore dialog
  static HWND IsWindowClassExist(const CString& class_name);

  // Asks every visible dialog, or with `all_windows` every visible window, to close, by a posted WM_CLOSE
  // with both parameters 16. The project settings ("工程设置" in the first 259 units of a title, visible or
  // not) stop it: they and all windows behind them stay. Without `all_windows` only a dialog is looked at.
  // Result: 1 when all windows were gone through, 0 when it was stopped or there is no window.
  static int CloseWindow(bool all_windows);

  // The control bar of the active window, by what stands in it: the first child whose window class name
  // contains "ControlBar" and which has a child with that text in its title. Null without one, without an
  // active window, and for a null text.
  static CWnd* GetDrawControlBar(LPCTSTR text);

  // Has the panels count anew what is placed: posts message 1128 to the control bar with "布置实体" and to
  // the dialog "项目列表区", then closes as CloseWindow(false), then sends WM_CLOSE to every window of the
  // run-time class "CDlgReback" until none is left or one stays. Does nothing while a project is open.
  // Result: false always.
  static bool RefreshDefNum();
  // Posts message 1128 to the dialog "回路核查" if there is one.
  static void RefeshDlgHLCheck();

  // Fills a control anew with the texts of a list, in its order; a text "?" is left out.
  static void AddComboxItem(CComboBox& control, CStringArray& list);
  static void AddComboxItem(CListBox& control, CStringArray& list);

  // ---- Times of a thread ----

  // What the calling thread has used so far, in counts of 100 nanoseconds.
  static void GetThreadKernalAndUserTimes(__int64& kernel, __int64& user);
  // The time between two such readings in whole milliseconds. Result: the sum of both.
  //
  //   (0, 0, 50000, 10000, kernel, user) gives 5 and 1, and 6
  static __int64 TransfomNsToMs(__int64 first_kernel, __int64 first_user, __int64 second_kernel,
                                __int64 second_user, int& kernel, int& user);

 protected:
  // What the windows are gone through with: 1 goes on, 0 stops. `search` is the address of a
  // lorv::WindowSearch (comm/window_search.h), 0 stops; `all_windows` is 0 or 1.
  static CWnd* FindWindowExist(const CString& title);
  static int EnumWindowsTitleProc(HWND window, __int64 search);
  static int EnumWindowsClassProc(HWND window, __int64 search);
  static int CloseWindowProc(HWND window, __int64 all_windows);
};
