// Comms: the one road of every command to the unit, the TCP socket's events
// and the status poll loop. It owns the global Link and the session state the
// exchange and the poll share; it reaches the host through the platform
// interfaces and the panel through LinkPanel.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "link/amp_link.h"
#include "link/link_panel.h"
#include "link/session_state.h"
#include "platform/dialogs.h"
#include "platform/event_pump.h"
#include "platform/tcp_socket.h"

namespace amp {

// The host services Comms needs, all owned by the caller.
struct LinkHost {
  TcpSocket& sckTcp;
  Timer& Timer1;
  EventPump& pump;
  Clock& clock;
  Dialogs& dialogs;
};

class Comms {
 public:
  static constexpr int64_t kTcpReplyWaitMs = 15000;
  static constexpr int64_t kSocketCloseWaitMs = 3000;
  static constexpr int kPollIntervalMs = 2500;

  Comms(LinkHost host, LinkPanel& panel);
  Comms(const Comms&) = delete;
  Comms& operator=(const Comms&) = delete;

  AmpLink Link;
  // Whether a session is up and how its polls fare.
  SessionState session;

  // Session state shared by the exchange and the poll.
  bool gUseEnet = false;        // exchanges go over the socket
  bool gTcpReplyReady = false;  // a whole reply has arrived on the socket
  std::string gTcpReply;        // that reply
  std::string mTcpRxBuffer;     // bytes received and not yet ended by a CR
  int16_t mFastCycle = 0;       // good polls since the last fast group
  int16_t mSlowCycle = 0;       // good polls since the last slow group
  bool gFirstReadPending = false;
  bool gFirstReadDone = false;
  bool gOneCharAlarm = false;               // the status query ends in 9
  std::array<std::string, 11> gRespFields;  // shared scratch of every reader

  // Sends `command` and leaves the whole reply frame in Link.RxMessage.
  // One exchange at a time: a poll tick that falls due while an exchange
  // waits for its reply (the TCP wait runs the event loop) is dropped, so
  // it can never take the reply meant for the command in flight.
  bool ExchangeCommand(std::string_view command, bool ShowError = false);
  bool ExchangeInFlight() const { return inFlight_; }
  bool ExchangeCommandTcp(std::string_view address, std::string_view command);
  bool CloseSocket();

  // The socket's events; Comms installs them on sckTcp.
  void sckTcp_Connect();
  void sckTcp_DataArrival(long bytesTotal);
  void sckTcp_Error(int number, const std::string& description, long scode,
                    const std::string& source);
  void sckTcp_ConnectionRequest(intptr_t requestId);

  // The status poll.
  std::string StatusQuery() const { return gOneCharAlarm ? "?!#9" : "?!#("; }
  bool ReadStatusBlock();
  bool UpdateStatus();
  void Timer1_Timer();

  // Ends the session as a dead socket does: timer off, panel cleared and
  // disabled, the button back to "Connect".
  void EndTcpSession();

  LinkHost& host() { return host_; }
  LinkPanel& panel() { return panel_; }

 private:
  bool inFlight_ = false;
  LinkHost host_;
  LinkPanel& panel_;
};

}  // namespace amp
