#ifndef ZLIBVIDEO_EXAMPLES_PLAYER_MESSAGEINPUT_H
#define ZLIBVIDEO_EXAMPLES_PLAYER_MESSAGEINPUT_H

#include <cstddef>
#include <span>
#include <string>
#include <vector>

/// The messages of a file, or of standard input as they come. All are kept, for going back. Nothing
/// here waits: a loop that has a window to look after asks again and again. A thread could wait
/// instead, but when the window is closed there is no good way to end one that waits in a read.
class MessageInput {
 public:
  /// Opens a file, or standard input for "-"; throws `std::system_error` when it cannot.
  explicit MessageInput(const std::string& name);
  MessageInput(const MessageInput&) = delete;
  MessageInput& operator=(const MessageInput&) = delete;
  ~MessageInput();

  /// Whether more may come.
  bool IsOpen() const { return fOpen; }
  std::size_t Count() const { return fMessages.size(); }
  /// The message of that index, from 0; valid until the next `Read`.
  std::span<unsigned char> Message(std::size_t index);

  /// Takes in some of what is there to be read; false when that is nothing. At the end, tells
  /// standard error what is wrong with it, or throws `std::runtime_error` when there is no message.
  bool Read();

 private:
  struct Place {
    std::size_t offset;
    std::size_t size;
  };

  void FindMessages();
  void End(int error);

  std::string fName;
  int fFile;
  bool fOpen = true;
  std::vector<unsigned char> fBytes;
  std::size_t fNext = 0;  // where the length of the next message is, or will be
  std::vector<Place> fMessages;
};

#endif  // ZLIBVIDEO_EXAMPLES_PLAYER_MESSAGEINPUT_H
