#include "CommandSpec.h"

namespace tessara::tool {

namespace {

QCommandLineOption valueOption(const QString& name, const QString& description, const QString& valueName) {
    return QCommandLineOption(name, description, valueName);
}

QList<CommandSpec> makeCommands() {
    QList<CommandSpec> commands;
    commands.append(
        {QStringLiteral("decode"),
         QStringLiteral("KIND FILE|-"),
         QStringLiteral("Decode a saved backend answer and print it back with sorted keys."),
         QStringLiteral("Reads FILE (or standard input for \"-\") as the backend answer KIND and decodes it "
                        "by the client's rules: required keys, no type coercion, unknown keys ignored.\n"
                        "On success the record is printed on standard output with sorted keys and absent "
                        "values left out. On failure the client's words (\"JSON decoding failed.\") go to "
                        "standard error and the exit status is 1.\n"
                        "KIND is one of: step, section-list, products, dates, details, kyc-status."),
         {QStringLiteral("KIND"), QStringLiteral("FILE")},
         {},
         {},
         false});
    commands.append(
        {QStringLiteral("start"),
         QStringLiteral("PROCESS_ID [--token T]"),
         QStringLiteral("Create a submission of a process (POST /submission); print its first step."),
         QStringLiteral("Starts a process on the backend and prints the step document it answers."),
         {QStringLiteral("PROCESS_ID")},
         {valueOption(QStringLiteral("token"), QStringLiteral("Calling service token to send."),
                      QStringLiteral("T"))},
         {}});
    commands.append({QStringLiteral("open"),
                     QStringLiteral("DIRECTION_ID"),
                     QStringLiteral("Load the current step of a direction (GET /step/direction/ID/current)."),
                     QStringLiteral("Reopens one step of a running process and prints its step document."),
                     {QStringLiteral("DIRECTION_ID")},
                     {},
                     {}});
    commands.append(
        {QStringLiteral("section"),
         QStringLiteral("SUBMISSION_ID KEY"),
         QStringLiteral("Load a section of a submission (GET /step/SUBMISSION_ID/KEY)."),
         QStringLiteral("Loads the documents of a SECTION field and prints the whole answered list "
                        "(the client itself uses its first entry)."),
         {QStringLiteral("SUBMISSION_ID"), QStringLiteral("KEY")},
         {},
         {}});
    commands.append(
        {QStringLiteral("submit"),
         QStringLiteral("--submission S --direction D [--from F] [--flow-field X] [--field KEY=VALUE]..."),
         QStringLiteral("Submit a step (POST /step); print the next step."),
         QStringLiteral(
             "Sends a step with the given values and prints the step document the backend answers."),
         {},
         {valueOption(QStringLiteral("submission"), QStringLiteral("Submission id (required)."),
                      QStringLiteral("S")),
          valueOption(QStringLiteral("direction"), QStringLiteral("Direction id asked for (required)."),
                      QStringLiteral("D")),
          valueOption(QStringLiteral("from"), QStringLiteral("Direction id of the step being left."),
                      QStringLiteral("F")),
          valueOption(QStringLiteral("flow-field"), QStringLiteral("Flow button that caused the move."),
                      QStringLiteral("X")),
          valueOption(QStringLiteral("field"),
                      QStringLiteral("A submitted value; may be repeated, order is kept."),
                      QStringLiteral("KEY=VALUE"))},
         {QStringLiteral("submission"), QStringLiteral("direction")}});
    commands.append(
        {QStringLiteral("upload"),
         QStringLiteral("--submission S --key K --from F FILE"),
         QStringLiteral("Upload a file for an upload field (POST /step/uploadFile, multipart)."),
         QStringLiteral("Uploads FILE for the field KEY. The file's type is guessed from its name and "
                        "contents; a name without a suffix gets the type's suffix in upper case.\n"
                        "Prints nothing on success."),
         {QStringLiteral("FILE")},
         {valueOption(QStringLiteral("submission"), QStringLiteral("Submission id (required)."),
                      QStringLiteral("S")),
          valueOption(QStringLiteral("key"), QStringLiteral("Key of the upload field (required)."),
                      QStringLiteral("K")),
          valueOption(QStringLiteral("from"), QStringLiteral("Direction id of the step (required)."),
                      QStringLiteral("F"))},
         {QStringLiteral("submission"), QStringLiteral("key"), QStringLiteral("from")}});
    commands.append({QStringLiteral("products"),
                     QString(),
                     QStringLiteral("List the credit products (GET /custom/credit/products)."),
                     QStringLiteral("Prints the credit products the backend offers."),
                     {},
                     {},
                     {}});
    commands.append(
        {QStringLiteral("dates"),
         QStringLiteral("PRODUCT_ID"),
         QStringLiteral("First-instalment dates of a product (GET /custom/credit/installmentDates)."),
         QStringLiteral("Prints the dates on which the first instalment of the product may fall. The "
                        "preferred date sent is the present moment."),
         {QStringLiteral("PRODUCT_ID")},
         {},
         {}});
    commands.append(
        {QStringLiteral("details"),
         QStringLiteral("--product P --amount A --periods N"),
         QStringLiteral("Calculate an instalment plan (POST /custom/credit/installmentDetails)."),
         QStringLiteral("Asks the backend for the plan of a credit and prints it. A is an exact decimal "
                        "amount such as 1500.50."),
         {},
         {valueOption(QStringLiteral("product"), QStringLiteral("Product id (required)."),
                      QStringLiteral("P")),
          valueOption(QStringLiteral("amount"), QStringLiteral("Amount (required)."), QStringLiteral("A")),
          valueOption(QStringLiteral("periods"), QStringLiteral("Number of periods (required)."),
                      QStringLiteral("N"))},
         {QStringLiteral("product"), QStringLiteral("amount"), QStringLiteral("periods")}});
    commands.append({QStringLiteral("kyc-status"),
                     QStringLiteral("SUBMISSION_ID USER_HASH"),
                     QStringLiteral("Ask for the identity check status (GET /step/v3/status/kyc/...)."),
                     QStringLiteral("Prints the verification service's status for a submission and user."),
                     {QStringLiteral("SUBMISSION_ID"), QStringLiteral("USER_HASH")},
                     {},
                     {}});
    commands.append(
        {QStringLiteral("listen"),
         QStringLiteral("STREAM_URL --user-hash H [--seconds N]"),
         QStringLiteral("Join a verification service's socket and print every message as the SDK reads it."),
         QStringLiteral(
             "Opens the verification socket at STREAM_URL with the path \"mobile/h264\" appended (ws, wss, "
             "http or https), with the SDK's own socket and signalling client: it joins as user H, pings "
             "every "
             "2 s and reconnects 1 s after a failure or an abnormal close, without limit.\n"
             "Prints one line per event on standard output:\n"
             "  open               the socket opened and the join went out\n"
             "  failed WORDS       the link failed (a reconnect follows in 1 s)\n"
             "  closed CODE        the service closed with CODE; after 1000 or 1001 the SDK stays closed "
             "and\n"
             "                     the command exits 0, after any other code it reconnects in 1 s\n"
             "  CMD JSON           a message handed to the screen: its command and the message as its own\n"
             "                     encoder writes it (numbers as JSON numbers, keys sorted)\n"
             "  bye                the bye went out and the socket was closed with 1000\n"
             "Frames the SDK ignores (no cmd, unknown commands, bye, join, hb) print nothing; messages that "
             "do "
             "not decode are logged on standard error. A terminal status (KYC_STATUS_SELFIE_OK, "
             "KYC_STATUS_FAILED, FAILED_NO_VIDEO_STREAM_CONNECTION, PROCESS_SUCCESS, PROCESS_FAIL) or the "
             "end "
             "of --seconds sends the bye and exits 0. A frame that is no JSON object, or whose cmd is no "
             "string, "
             "ends the program as it ends the SDK (abort)."),
         {QStringLiteral("STREAM_URL")},
         {valueOption(QStringLiteral("user-hash"),
                      QStringLiteral("User hash sent in join and bye (required)."), QStringLiteral("H")),
          valueOption(QStringLiteral("seconds"), QStringLiteral("Stop after N seconds (default: never)."),
                      QStringLiteral("N"))},
         {QStringLiteral("user-hash")},
         false});
    commands.append(
        {QStringLiteral("encode"),
         QStringLiteral("OUT.h264 [--camera synthetic|file:PATH] [--size WxH] [--position back|front] "
                        "[--frames N] [--fps F] [--realtime]"),
         QStringLiteral(
             "Run a camera through the SDK's capture, H.264 encoder and framing; write the stream."),
         QStringLiteral(
             "Runs the SDK's capture manager, encoder and stream framing on a camera and writes every "
             "message's bytes, in order, to OUT.h264: an H.264 elementary stream (constrained baseline, "
             "level 4.1, 1440x1080 from a 1920x1440 camera format, SPS and PPS before every key frame, a "
             "key frame at least every 60 pictures).\n"
             "The synthetic camera draws a document card (back) or a face (front) with hand motion and "
             "sensor noise; by default it offers a phone camera's formats, with --size WxH only the "
             "format whose upright frames are WxH. A file camera plays raw NV12 frames of WxH (default "
             "1440x1920, already upright) in a loop. Without --realtime frames are made as fast as the "
             "encoder takes them; with it they come at F per second.\n"
             "Prints a summary on standard output, one \"name: value\" line each:\n"
             "  pictures: N\n"
             "  units: N                        messages written (one unit each)\n"
             "  bytes: N\n"
             "  key frames: N at I I ...        picture numbers of the key frames, from 0\n"
             "  largest key frame spacing: N    pictures between consecutive key frames (- for one)\n"
             "  bit rate: R kbit/s at F fps\n"
             "  encode time per picture: median T ms, p99 T ms\n"
             "  capture to message: median T ms, p99 T ms\n"
             "A camera the SDK cannot use (no format of at least 1920x1440 in 4:3 NV12, an unreadable "
             "file) ends with a message on standard error and exit status 1."),
         {QStringLiteral("OUT.h264")},
         {valueOption(QStringLiteral("camera"), QStringLiteral("synthetic (default) or file:PATH."),
                      QStringLiteral("CAMERA")),
          valueOption(QStringLiteral("size"), QStringLiteral("Upright frame size, e.g. 1440x1920."),
                      QStringLiteral("WxH")),
          valueOption(QStringLiteral("position"), QStringLiteral("back (default) or front."),
                      QStringLiteral("POSITION")),
          valueOption(QStringLiteral("frames"), QStringLiteral("Pictures to encode (default 150)."),
                      QStringLiteral("N")),
          valueOption(QStringLiteral("fps"), QStringLiteral("Frame rate (default 30)."), QStringLiteral("F")),
          QCommandLineOption(QStringLiteral("realtime"), QStringLiteral("Pace the camera at F per second."))},
         {},
         false});
    return commands;
}

} // namespace

const QList<CommandSpec>& CommandSpec::all() {
    static const QList<CommandSpec> commands = makeCommands();
    return commands;
}

const CommandSpec* CommandSpec::find(const QString& name) {
    for (const CommandSpec& command : all()) {
        if (command.name == name)
            return &command;
    }
    return nullptr;
}

QString CommandSpec::overview() {
    QString text =
        QStringLiteral("Usage: tessara COMMAND [ARGUMENTS] [--backend URL] [--timeout S]\n\n"
                       "Talks to a backend with the same client a host application embeds, or decodes "
                       "saved answers by the same rules.\n\nCommands:\n");
    for (const CommandSpec& command : all()) {
        const QString call =
            command.synopsis.isEmpty() ? command.name : command.name + QLatin1Char(' ') + command.synopsis;
        text += QStringLiteral("  %1\n      %2\n").arg(call, command.summary);
    }
    text += QStringLiteral(
        "\nOptions of every command that talks to the backend:\n"
        "  --backend URL  Base URL of the backend (default: the compiled-in endpoint).\n"
        "  --timeout S    Give up after S seconds without a result (default 70). A refused request that\n"
        "                 carries no explanation is never answered by the client; this ends the wait.\n"
        "\nAnswers are printed on standard output as JSON with sorted keys. Errors are printed on standard\n"
        "error with the client's words, or the backend's own message; the exit status is then 1.\n"
        "Wrong usage exits with status 2. \"tessara COMMAND --help\" explains one command.\n");
    return text;
}

} // namespace tessara::tool
