// Message maps and command routing.
//
// A class lists the messages it handles in a message map: a static table of
// entries, each naming the message and a typed handler named after it
// (OnSize, OnCopyData). The table of a class points to its base's, so a
// message goes to the most derived handler; one that no table lists goes to
// the window's default procedure. Commands (WM_COMMAND) travel the same
// tables, by id, and a frame offers them to the application object last.
//
// Four kinds of entry are found by id and code through OnCmdMsg rather than
// by message number: commands and control notifications (WM_COMMAND), common
// control notifications (WM_NOTIFY), and the two kinds a parent reflects back
// to the control that sent them (WM_REFLECT_BASE + WM_COMMAND or WM_NOTIFY).
// OnCmdMsg takes the message in the high word of nCode and the notification
// code in the low word; a high word of 0 means WM_COMMAND.
#pragma once

#include "CObject.h"
#include "CCmdUI.h"

class CCmdTarget;

typedef LRESULT (*AFX_PMSGFN)(CCmdTarget* pTarget, WPARAM wParam, LPARAM lParam);

struct AFX_MSGMAP_ENTRY
{
    UINT nMessage;            // window message; WM_COMMAND, WM_NOTIFY or a reflected one for id entries
    UINT nCode;               // id entries: notification code (low 16 bits), CN_COMMAND or CN_UPDATE_COMMAND_UI
    UINT nID;                 // id entries: first id
    UINT nLastID;             // id entries: last id
    const UINT* pnRegistered; // registered message entries: the variable holding its number
    AFX_PMSGFN pfn;           // NULL ends the table
};

struct AFX_MSGMAP
{
    const AFX_MSGMAP* (*pfnGetBaseMap)();
    const AFX_MSGMAP_ENTRY* lpEntries;
};

enum
{
    CN_COMMAND = 0,
    CN_UPDATE_COMMAND_UI = static_cast<int>(0xFFFFFFFF)
};

// A message a parent sends back to the control it came from is numbered
// WM_REFLECT_BASE + the message (below the registered messages' 0xC000).
#define WM_REFLECT_BASE 0xBC00

// What a WM_NOTIFY handler receives through OnCmdMsg's pExtra.
struct AFX_NOTIFY
{
    LRESULT* pResult;
    NMHDR* pNMHDR;
};

// Filled instead of calling the handler when OnCmdMsg is only asked whether
// a handler exists.
struct AFX_CMDHANDLERINFO
{
    CCmdTarget* pTarget;
    const AFX_MSGMAP_ENTRY* pEntry;
};

class CCmdTarget : public CObject
{
    DECLARE_DYNAMIC(CCmdTarget)
public:
    // Offers a command (or its update request, pExtra then being the CCmdUI,
    // or a notification, pExtra then being the AFX_NOTIFY) to this object's
    // message map. TRUE when a handler took it; with pHandlerInfo (an
    // AFX_CMDHANDLERINFO) the handler is only looked up, not called.
    virtual BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo);

protected:
    static const AFX_MSGMAP* GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;

    // The first entry of the map chain that handles nMessage (registered
    // messages by their number), or NULL. Id entries are never found here.
    static const AFX_MSGMAP_ENTRY* FindMessageEntry(const AFX_MSGMAP* pMap, UINT nMessage);
    static BOOL IsIdEntry(const AFX_MSGMAP_ENTRY* pEntry);
};

#define DECLARE_MESSAGE_MAP()                          \
protected:                                             \
    static const AFX_MSGMAP* GetThisMessageMap();      \
    const AFX_MSGMAP* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                  \
    const AFX_MSGMAP* theClass::GetMessageMap() const { return GetThisMessageMap(); } \
    const AFX_MSGMAP* theClass::GetThisMessageMap()                             \
    {                                                                           \
        using ThisClass [[maybe_unused]] = theClass; /* unused in an empty map */ \
        typedef baseClass TheBaseClass;                                         \
        static const AFX_MSGMAP_ENTRY _messageEntries[] = {

#define END_MESSAGE_MAP()                                                       \
            {0, 0, 0, 0, nullptr, nullptr}};                                    \
        static const AFX_MSGMAP messageMap = {&TheBaseClass::GetThisMessageMap, \
                                              &_messageEntries[0]};             \
        return &messageMap;                                                     \
    }

#define AFX_THIS(p) static_cast<ThisClass*>(p)
#define AFX_NOTIFY_OF(l) reinterpret_cast<AFX_NOTIFY*>(l)
#define AFX_CODE(code) static_cast<UINT>(static_cast<WORD>(code))

// Generic entries.
#define ON_MESSAGE(message, memberFxn)                                          \
    {message, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM w, LPARAM l) -> LRESULT \
     { return AFX_THIS(p)->memberFxn(w, l); }},
#define ON_REGISTERED_MESSAGE(nMessageVariable, memberFxn)                      \
    {0xC000, 0, 0, 0, &nMessageVariable, [](CCmdTarget* p, WPARAM w, LPARAM l) -> LRESULT \
     { return AFX_THIS(p)->memberFxn(w, l); }},

// Commands: void OnX(); the _EX form BOOL OnX(UINT nID), FALSE passing the
// command on; the range form void OnX(UINT nID).
#define ON_COMMAND(id, memberFxn)                                               \
    {WM_COMMAND, CN_COMMAND, id, id, nullptr, [](CCmdTarget* p, WPARAM, LPARAM) -> LRESULT \
     { AFX_THIS(p)->memberFxn(); return TRUE; }},
#define ON_COMMAND_EX(id, memberFxn)                                            \
    {WM_COMMAND, CN_COMMAND, id, id, nullptr, [](CCmdTarget* p, WPARAM w, LPARAM) -> LRESULT \
     { return AFX_THIS(p)->memberFxn(static_cast<UINT>(w)); }},
#define ON_COMMAND_RANGE(id, idLast, memberFxn)                                 \
    {WM_COMMAND, CN_COMMAND, id, idLast, nullptr, [](CCmdTarget* p, WPARAM w, LPARAM) -> LRESULT \
     { AFX_THIS(p)->memberFxn(static_cast<UINT>(w)); return TRUE; }},

// Update handlers: void OnUpdateX(CCmdUI*). A handler that calls
// ContinueRouting lets the request go on to the next target.
#define AFX_UPDATE_ENTRY(id, idLast, memberFxn)                                 \
    {WM_COMMAND, static_cast<UINT>(CN_UPDATE_COMMAND_UI), id, idLast, nullptr,  \
     [](CCmdTarget* p, WPARAM, LPARAM l) -> LRESULT                             \
     {                                                                          \
         CCmdUI* pCmdUI = reinterpret_cast<CCmdUI*>(l);                         \
         pCmdUI->m_bContinueRouting = FALSE;                                    \
         AFX_THIS(p)->memberFxn(pCmdUI);                                        \
         const BOOL bHandled = !pCmdUI->m_bContinueRouting;                     \
         pCmdUI->m_bContinueRouting = FALSE;                                    \
         return bHandled;                                                       \
     }},
#define ON_UPDATE_COMMAND_UI(id, memberFxn) AFX_UPDATE_ENTRY(id, id, memberFxn)
#define ON_UPDATE_COMMAND_UI_RANGE(id, idLast, memberFxn) AFX_UPDATE_ENTRY(id, idLast, memberFxn)

// Control notifications in WM_COMMAND: void OnX().
#define ON_CONTROL(code, id, memberFxn)                                         \
    {WM_COMMAND, AFX_CODE(code), id, id, nullptr, [](CCmdTarget* p, WPARAM, LPARAM) -> LRESULT \
     { AFX_THIS(p)->memberFxn(); return TRUE; }},
#define ON_BN_CLICKED(id, memberFxn) ON_CONTROL(BN_CLICKED, id, memberFxn)
#define ON_EN_CHANGE(id, memberFxn) ON_CONTROL(EN_CHANGE, id, memberFxn)

// Notifications in WM_NOTIFY: void OnX(NMHDR*, LRESULT*); the range form
// void OnX(UINT nID, NMHDR*, LRESULT*); the _EX forms BOOL OnX(UINT nID,
// NMHDR*, LRESULT*), FALSE meaning not handled.
#define ON_NOTIFY(code, id, memberFxn)                                          \
    {WM_NOTIFY, AFX_CODE(code), id, id, nullptr, [](CCmdTarget* p, WPARAM, LPARAM l) -> LRESULT \
     { AFX_THIS(p)->memberFxn(AFX_NOTIFY_OF(l)->pNMHDR, AFX_NOTIFY_OF(l)->pResult); return TRUE; }},
#define ON_NOTIFY_RANGE(code, id, idLast, memberFxn)                            \
    {WM_NOTIFY, AFX_CODE(code), id, idLast, nullptr, [](CCmdTarget* p, WPARAM w, LPARAM l) -> LRESULT \
     { AFX_THIS(p)->memberFxn(static_cast<UINT>(w), AFX_NOTIFY_OF(l)->pNMHDR, AFX_NOTIFY_OF(l)->pResult); \
       return TRUE; }},
#define ON_NOTIFY_EX(code, id, memberFxn)                                       \
    {WM_NOTIFY, AFX_CODE(code), id, id, nullptr, [](CCmdTarget* p, WPARAM w, LPARAM l) -> LRESULT \
     { return AFX_THIS(p)->memberFxn(static_cast<UINT>(w), AFX_NOTIFY_OF(l)->pNMHDR, AFX_NOTIFY_OF(l)->pResult); }},
#define ON_NOTIFY_EX_RANGE(code, id, idLast, memberFxn)                         \
    {WM_NOTIFY, AFX_CODE(code), id, idLast, nullptr, [](CCmdTarget* p, WPARAM w, LPARAM l) -> LRESULT \
     { return AFX_THIS(p)->memberFxn(static_cast<UINT>(w), AFX_NOTIFY_OF(l)->pNMHDR, AFX_NOTIFY_OF(l)->pResult); }},

// Reflected to the control itself. A plain handler (void OnX(NMHDR*,
// LRESULT*), void OnX()) takes the notification away from the parent; an _EX
// handler (BOOL OnX(NMHDR*, LRESULT*), BOOL OnX()) returning FALSE lets the
// parent have it too.
#define ON_NOTIFY_REFLECT(code, memberFxn)                                      \
    {WM_REFLECT_BASE + WM_NOTIFY, AFX_CODE(code), 0, 0, nullptr,               \
     [](CCmdTarget* p, WPARAM, LPARAM l) -> LRESULT                             \
     { AFX_THIS(p)->memberFxn(AFX_NOTIFY_OF(l)->pNMHDR, AFX_NOTIFY_OF(l)->pResult); return TRUE; }},
#define ON_NOTIFY_REFLECT_EX(code, memberFxn)                                   \
    {WM_REFLECT_BASE + WM_NOTIFY, AFX_CODE(code), 0, 0, nullptr,               \
     [](CCmdTarget* p, WPARAM, LPARAM l) -> LRESULT                             \
     { return AFX_THIS(p)->memberFxn(AFX_NOTIFY_OF(l)->pNMHDR, AFX_NOTIFY_OF(l)->pResult); }},
#define ON_CONTROL_REFLECT(code, memberFxn)                                     \
    {WM_REFLECT_BASE + WM_COMMAND, AFX_CODE(code), 0, 0, nullptr,              \
     [](CCmdTarget* p, WPARAM, LPARAM) -> LRESULT { AFX_THIS(p)->memberFxn(); return TRUE; }},
#define ON_CONTROL_REFLECT_EX(code, memberFxn)                                  \
    {WM_REFLECT_BASE + WM_COMMAND, AFX_CODE(code), 0, 0, nullptr,              \
     [](CCmdTarget* p, WPARAM, LPARAM) -> LRESULT { return AFX_THIS(p)->memberFxn(); }},

// Typed window message entries.
#define AFX_POINT_OF(l) CPoint(static_cast<short>(LOWORD(l)), static_cast<short>(HIWORD(l)))

#define ON_WM_CREATE()                                                          \
    {WM_CREATE, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM, LPARAM l) -> LRESULT \
     { return AFX_THIS(p)->OnCreate(reinterpret_cast<LPCREATESTRUCT>(l)); }},
#define ON_WM_CLOSE()                                                           \
    {WM_CLOSE, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM, LPARAM) -> LRESULT   \
     { AFX_THIS(p)->OnClose(); return 0; }},
#define ON_WM_DESTROY()                                                         \
    {WM_DESTROY, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM, LPARAM) -> LRESULT \
     { AFX_THIS(p)->OnDestroy(); return 0; }},
#define ON_WM_SIZE()                                                            \
    {WM_SIZE, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM w, LPARAM l) -> LRESULT \
     { AFX_THIS(p)->OnSize(static_cast<UINT>(w), LOWORD(l), HIWORD(l)); return 0; }},
#define ON_WM_PAINT()                                                           \
    {WM_PAINT, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM, LPARAM) -> LRESULT   \
     { AFX_THIS(p)->OnPaint(); return 0; }},
#define ON_WM_TIMER()                                                           \
    {WM_TIMER, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM w, LPARAM) -> LRESULT \
     { AFX_THIS(p)->OnTimer(static_cast<UINT_PTR>(w)); return 0; }},
#define ON_WM_COPYDATA()                                                        \
    {WM_COPYDATA, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM w, LPARAM l) -> LRESULT \
     { return AFX_THIS(p)->OnCopyData(CWnd::FromHandle(reinterpret_cast<HWND>(w)), \
                                      reinterpret_cast<COPYDATASTRUCT*>(l)); }},
#define ON_WM_NCHITTEST()                                                       \
    {WM_NCHITTEST, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM, LPARAM l) -> LRESULT \
     { return AFX_THIS(p)->OnNcHitTest(AFX_POINT_OF(l)); }},
#define ON_WM_ERASEBKGND()                                                      \
    {WM_ERASEBKGND, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM w, LPARAM) -> LRESULT \
     { CDC dc(reinterpret_cast<HDC>(w)); return AFX_THIS(p)->OnEraseBkgnd(&dc); }},
#define ON_WM_SETFOCUS()                                                        \
    {WM_SETFOCUS, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM w, LPARAM) -> LRESULT \
     { AFX_THIS(p)->OnSetFocus(CWnd::FromHandle(reinterpret_cast<HWND>(w))); return 0; }},
#define ON_WM_KILLFOCUS()                                                       \
    {WM_KILLFOCUS, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM w, LPARAM) -> LRESULT \
     { AFX_THIS(p)->OnKillFocus(CWnd::FromHandle(reinterpret_cast<HWND>(w))); return 0; }},
#define ON_WM_SYSCOLORCHANGE()                                                  \
    {WM_SYSCOLORCHANGE, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM, LPARAM) -> LRESULT \
     { AFX_THIS(p)->OnSysColorChange(); return 0; }},
#define ON_WM_KEYDOWN()                                                         \
    {WM_KEYDOWN, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM w, LPARAM l) -> LRESULT \
     { AFX_THIS(p)->OnKeyDown(static_cast<UINT>(w), LOWORD(l), HIWORD(l)); return 0; }},
#define AFX_MOUSE_ENTRY(message, memberFxn)                                     \
    {message, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM w, LPARAM l) -> LRESULT \
     { AFX_THIS(p)->memberFxn(static_cast<UINT>(w), AFX_POINT_OF(l)); return 0; }},
#define ON_WM_MOUSEMOVE() AFX_MOUSE_ENTRY(WM_MOUSEMOVE, OnMouseMove)
#define ON_WM_LBUTTONDOWN() AFX_MOUSE_ENTRY(WM_LBUTTONDOWN, OnLButtonDown)
#define ON_WM_LBUTTONUP() AFX_MOUSE_ENTRY(WM_LBUTTONUP, OnLButtonUp)
#define ON_WM_LBUTTONDBLCLK() AFX_MOUSE_ENTRY(WM_LBUTTONDBLCLK, OnLButtonDblClk)
#define ON_WM_RBUTTONDOWN() AFX_MOUSE_ENTRY(WM_RBUTTONDOWN, OnRButtonDown)
#define ON_WM_RBUTTONUP() AFX_MOUSE_ENTRY(WM_RBUTTONUP, OnRButtonUp)
#define ON_WM_CAPTURECHANGED()                                                  \
    {WM_CAPTURECHANGED, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM, LPARAM l) -> LRESULT \
     { AFX_THIS(p)->OnCaptureChanged(CWnd::FromHandle(reinterpret_cast<HWND>(l))); return 0; }},
#define ON_WM_SETCURSOR()                                                       \
    {WM_SETCURSOR, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM w, LPARAM l) -> LRESULT \
     { return AFX_THIS(p)->OnSetCursor(CWnd::FromHandle(reinterpret_cast<HWND>(w)), LOWORD(l), HIWORD(l)); }},
#define ON_WM_CONTEXTMENU()                                                     \
    {WM_CONTEXTMENU, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM w, LPARAM l) -> LRESULT \
     { AFX_THIS(p)->OnContextMenu(CWnd::FromHandle(reinterpret_cast<HWND>(w)), AFX_POINT_OF(l)); return 0; }},
// The popup is passed as a menu object that does not own it.
#define ON_WM_INITMENUPOPUP()                                                   \
    {WM_INITMENUPOPUP, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM w, LPARAM l) -> LRESULT \
     {                                                                          \
         CMenu menu;                                                            \
         menu.Attach(reinterpret_cast<HMENU>(w));                               \
         AFX_THIS(p)->OnInitMenuPopup(&menu, LOWORD(l), HIWORD(l));             \
         menu.Detach();                                                         \
         return 0;                                                              \
     }},
