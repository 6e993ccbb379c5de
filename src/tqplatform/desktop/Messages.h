#pragma once

// The numbers of messages, notifications, styles and keys, as published for the desktop.

namespace tqplatform {

/// The two halves of a message's parameter, and a parameter made of them.
constexpr unsigned int lowWord(unsigned long parameter) {
    return parameter & 0xFFFF;
}
constexpr unsigned int highWord(unsigned long parameter) {
    return parameter >> 16 & 0xFFFF;
}
constexpr unsigned int joinWords(unsigned int low, unsigned int high) {
    return lowWord(low) | lowWord(high) << 16;
}

}  // namespace tqplatform

/// The window has gone out of the desktop; its handle is dead after this message.
inline constexpr unsigned int WM_DESTROY = 0x2;
/// The window has got the focus, or will lose it; the first parameter is the other window.
inline constexpr unsigned int WM_SETFOCUS = 0x7;
inline constexpr unsigned int WM_KILLFOCUS = 0x8;
/// Sets the text; the second parameter is its address. The result is 1.
inline constexpr unsigned int WM_SETTEXT = 0xC;
/// Copies the text to the block at the second parameter, cut so that it fits the size in the first
/// one with a NUL. The result is the number of characters copied.
inline constexpr unsigned int WM_GETTEXT = 0xD;
/// The number of characters of the text.
inline constexpr unsigned int WM_GETTEXTLENGTH = 0xE;
/// The window is to close.
inline constexpr unsigned int WM_CLOSE = 0x10;
/// Moves the focus of a dialog: to the control in the first parameter if the second one is not 0,
/// else to the next control for 0 and to the one before for 1.
inline constexpr unsigned int WM_NEXTDLGCTL = 0x28;
/// What keys a control wants for itself: a sum of DLGC_ values. The first parameter is a key.
inline constexpr unsigned int WM_GETDLGCODE = 0x87;
/// A key; the first parameter is its number, a VK_ value. WM_SYSKEYDOWN: with Alt.
inline constexpr unsigned int WM_KEYDOWN = 0x100;
inline constexpr unsigned int WM_SYSKEYDOWN = 0x104;
/// A typed character in the first parameter. WM_SYSCHAR: with Alt.
inline constexpr unsigned int WM_CHAR = 0x102;
inline constexpr unsigned int WM_SYSCHAR = 0x106;
/// The controls of a dialog exist. The first parameter is the one that gets the focus unless the
/// answer is 0.
inline constexpr unsigned int WM_INITDIALOG = 0x110;
/// A command: identifier and notification code in the words of the first parameter, the handle of
/// the control in the second one.
inline constexpr unsigned int WM_COMMAND = 0x111;
/// A choice in the system menu, in the first parameter.
inline constexpr unsigned int WM_SYSCOMMAND = 0x112;
inline constexpr unsigned int SC_CLOSE = 0xF060;
/// A scroll control was used: its code and position in the words of the first parameter, its handle
/// in the second one.
inline constexpr unsigned int WM_VSCROLL = 0x115;
inline constexpr unsigned int SB_LINEUP = 0;
inline constexpr unsigned int SB_LINEDOWN = 1;
/// A click of the mouse's left button on the window.
inline constexpr unsigned int WM_LBUTTONDOWN = 0x201;

/// For a dialog: makes the button in the first parameter the default one; gives its identifier,
/// with DC_HASDEFID above it, or 0.
inline constexpr unsigned int DM_GETDEFID = 0x400;
inline constexpr unsigned int DM_SETDEFID = 0x401;
inline constexpr unsigned int DC_HASDEFID = 0x534B;

/// What WM_GETDLGCODE answers.
inline constexpr int DLGC_WANTARROWS = 0x1;
inline constexpr int DLGC_WANTALLKEYS = 0x4;
inline constexpr int DLGC_HASSETSEL = 0x8;
inline constexpr int DLGC_DEFPUSHBUTTON = 0x10;
inline constexpr int DLGC_UNDEFPUSHBUTTON = 0x20;
inline constexpr int DLGC_WANTCHARS = 0x80;
inline constexpr int DLGC_STATIC = 0x100;

/// Selection of an edit control. EM_GETSEL gives start and end in the words of its result, and in
/// full at the addresses in its parameters, which may be null. EM_SETSEL takes them; an end of -1
/// is the end of the text, a start of -1 takes the selection away.
inline constexpr unsigned int EM_GETSEL = 0xB0;
inline constexpr unsigned int EM_SETSEL = 0xB1;
/// Brings the caret into sight.
inline constexpr unsigned int EM_SCROLLCARET = 0xB7;
/// Replaces the selection by the text at the second parameter.
inline constexpr unsigned int EM_REPLACESEL = 0xC2;
/// The most characters that the user can make of the text; 0 is as many as possible.
inline constexpr unsigned int EM_LIMITTEXT = 0xC5;
inline constexpr unsigned int EM_GETLIMITTEXT = 0xD5;

/// What an edit control tells its parent.
inline constexpr unsigned int EN_SETFOCUS = 0x100;
inline constexpr unsigned int EN_KILLFOCUS = 0x200;
inline constexpr unsigned int EN_CHANGE = 0x300;  ///< the text has changed and stands on the screen
inline constexpr unsigned int EN_UPDATE = 0x400;  ///< the text has changed
inline constexpr unsigned int EN_MAXTEXT = 0x501;  ///< the limit cut what was typed

/// For a push button: sets its style; clicks it.
inline constexpr unsigned int BM_SETSTYLE = 0xF4;
inline constexpr unsigned int BM_CLICK = 0xF5;
inline constexpr unsigned int BN_CLICKED = 0;

/// For a combo box. Indices count from 0, and -1 as the item to start behind is the whole list.
/// Failures give CB_ERR. Texts stand at the second parameter and are compared without regard to
/// case.
inline constexpr int CB_ERR = -1;
inline constexpr int CB_OKAY = 0;
inline constexpr unsigned int CB_GETEDITSEL =
    0x140;  ///< start and end in the words, like EM_GETSEL
inline constexpr unsigned int CB_LIMITTEXT = 0x141;
inline constexpr unsigned int CB_SETEDITSEL = 0x142;  ///< start and end in the second one's words
inline constexpr unsigned int CB_ADDSTRING = 0x143;   ///< at the end, or its place in a sorted list
inline constexpr unsigned int CB_DELETESTRING = 0x144;
inline constexpr unsigned int CB_GETCOUNT = 0x146;
inline constexpr unsigned int CB_GETCURSEL = 0x147;
inline constexpr unsigned int CB_GETLBTEXT = 0x148;  ///< copies the text of an item, of any length
inline constexpr unsigned int CB_GETLBTEXTLEN = 0x149;
inline constexpr unsigned int CB_INSERTSTRING = 0x14A;  ///< at an index, or at the end for -1
inline constexpr unsigned int CB_RESETCONTENT = 0x14B;
inline constexpr unsigned int CB_FINDSTRING = 0x14C;    ///< an item that begins with the text
inline constexpr unsigned int CB_SELECTSTRING = 0x14D;  ///< the same, and selects it
inline constexpr unsigned int CB_SETCURSEL = 0x14E;
inline constexpr unsigned int CB_SHOWDROPDOWN = 0x14F;
inline constexpr unsigned int CB_GETDROPPEDSTATE = 0x157;
inline constexpr unsigned int CB_FINDSTRINGEXACT = 0x158;

/// What a combo box tells its parent.
inline constexpr unsigned int CBN_SELCHANGE = 1;
inline constexpr unsigned int CBN_SETFOCUS = 3;
inline constexpr unsigned int CBN_KILLFOCUS = 4;
inline constexpr unsigned int CBN_EDITCHANGE = 5;
inline constexpr unsigned int CBN_EDITUPDATE = 6;
inline constexpr unsigned int CBN_DROPDOWN = 7;
inline constexpr unsigned int CBN_CLOSEUP = 8;
inline constexpr unsigned int CBN_SELENDOK = 9;
inline constexpr unsigned int CBN_SELENDCANCEL = 10;

/// Styles of all windows; the low 16 bits belong to the window's class.
inline constexpr unsigned int WS_TABSTOP = 0x00010000;
inline constexpr unsigned int WS_GROUP = 0x00020000;
inline constexpr unsigned int WS_SYSMENU = 0x00080000;
inline constexpr unsigned int WS_BORDER = 0x00800000;
inline constexpr unsigned int WS_CAPTION = 0x00C00000;
inline constexpr unsigned int WS_DISABLED = 0x08000000;
inline constexpr unsigned int WS_VISIBLE = 0x10000000;
inline constexpr unsigned int WS_CHILD = 0x40000000;
inline constexpr unsigned int WS_POPUP = 0x80000000;

/// Styles of dialogs, buttons, combo boxes and static controls.
inline constexpr unsigned int DS_SETFONT = 0x40;
inline constexpr unsigned int DS_MODALFRAME = 0x80;
inline constexpr unsigned int BS_PUSHBUTTON = 0;
inline constexpr unsigned int BS_DEFPUSHBUTTON = 1;
inline constexpr unsigned int CBS_SIMPLE = 1;        ///< a field and a list that is always open
inline constexpr unsigned int CBS_DROPDOWN = 2;      ///< a field and a list that opens
inline constexpr unsigned int CBS_DROPDOWNLIST = 3;  ///< a list that opens, and no typing
inline constexpr unsigned int CBS_SORT = 0x100;
inline constexpr unsigned int SS_LEFT = 0;
inline constexpr unsigned int SS_BITMAP = 0xE;  ///< a picture: the text names its resource

/// Keys. A letter or digit has the number of its capital.
inline constexpr unsigned int VK_BACK = 0x8;
inline constexpr unsigned int VK_TAB = 0x9;
inline constexpr unsigned int VK_RETURN = 0xD;
inline constexpr unsigned int VK_ESCAPE = 0x1B;
inline constexpr unsigned int VK_SPACE = 0x20;
inline constexpr unsigned int VK_PRIOR = 0x21;
inline constexpr unsigned int VK_NEXT = 0x22;
inline constexpr unsigned int VK_END = 0x23;
inline constexpr unsigned int VK_HOME = 0x24;
inline constexpr unsigned int VK_LEFT = 0x25;
inline constexpr unsigned int VK_UP = 0x26;
inline constexpr unsigned int VK_RIGHT = 0x27;
inline constexpr unsigned int VK_DOWN = 0x28;
inline constexpr unsigned int VK_DELETE = 0x2E;
inline constexpr unsigned int VK_F4 = 0x73;
