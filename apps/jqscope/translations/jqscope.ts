<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" sourcelanguage="en">
<context>
    <name>Actions</name>
    <message>
        <source>&amp;Source</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Simulated microscope</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Try everything without a camera: move the stage by the arrow keys</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Camera…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Take frames from a camera or a stream</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Folder of pictures…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Take the pictures of a folder as frames</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Watched folder…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Take pictures as they appear in a folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Video file…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Take the frames of a video</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Re&amp;corded run…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Take the frames that the journal of an earlier run holds</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stitch &amp;pictures…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stitch picture files as a batch, as dropping them on the window does</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Slide of the &amp;microscope…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Let the simulated microscope look at a picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Hold the light</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ask the camera to keep exposure and white balance as they are now</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>End the program</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Run</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Start</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Begin a run with the frame under the camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Pause</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Look around without stitching; again to go on</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>S&amp;top</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>End the run or the batch; its picture stays</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;New run</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Forget the picture and begin again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Undo frame</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Take the frame placed last out of the picture, several times if need be</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Find me when lost</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>When lost, compare the frame with earlier places and go on where one agrees clearly</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>S&amp;ettings…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How frames are judged, objectives and pixel size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save the picture so far; the run goes on</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save &amp;as…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save the picture so far under another name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel sa&amp;ving</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>End the saving that goes on; an earlier file stays as it was</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Copy view</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy what the view shows to the clipboard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Trim to the frames</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save the placed frames alone, without the empty canvas around</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Background colour…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The colour where nothing is, in the view and in saved pictures</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bac&amp;kground black</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Leave black where nothing is</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Fit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the whole picture (double click does the same)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;One to one</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>One pixel of the picture on one of the screen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom &amp;in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Larger (the mouse wheel does the same)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom o&amp;ut</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Smaller (the mouse wheel does the same)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Follow the &amp;camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keep the frame under the camera in view</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pan &amp;left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Look further to the left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pan &amp;right</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Look further to the right</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pan u&amp;p</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Look further up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pan &amp;down</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Look further down</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Theme</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dark, light, or as the system has it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;How to move</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What makes a run succeed, with pictures</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The program and its version</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tools</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Batch</name>
    <message>
        <source>%1 × %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Looking at the files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stitching the files: %1 of %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The files could not be stitched: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stopped: %1 of %2 files are in the picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>None of the files could be used</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Done: %1 of %2 files are in the picture; save it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> (%1 instead of %2)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Guidance</name>
    <message>
        <source>Too dark beside the picture so far: give more light or exposure</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Too bright beside the picture so far: give less light or exposure</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Out of focus beside the picture so far: focus again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lost: move back to the highlighted place</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The first frame is placed: move on, slowly, in any direction</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Placed: move on</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Move on: %1 % of the frame, %2 % needed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Too far: move back towards the outline</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing to hold on to here: too little texture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing to hold on to in the frame placed last: start a new run where there is texture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This frame has another size than the first one and cannot be used</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This frame cannot be used: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Press Start, then move slowly</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Paused: press Space to go on</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stopped: save the picture, or start a new run</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The source has ended without a frame that could be used</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The source has ended: save the picture, or start a new run</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The memory is used up: save the picture and start a new run</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Waiting for the first frame</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>placed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>too little texture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unlike the picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>too few matches</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not yet far enough</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>too far</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>other size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unreadable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not reached</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>HelpPage</name>
    <message>
        <source>How to move</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;h2&gt;How to move&lt;/h2&gt;&lt;p&gt;Start a run with F5 where the picture shows something. Then move slowly and steadily: 1 to 5 % of the frame from one frame to the next. The sentence above the picture always says what to do now.&lt;/p&gt;&lt;p&gt;&lt;img src=&apos;tracked&apos;&gt; A frame that has not moved by 10 % since the frame placed last is followed, not placed: move on.&lt;/p&gt;&lt;p&gt;&lt;img src=&apos;placed&apos;&gt; From 10 % to 90 % it is placed, and the picture grows.&lt;/p&gt;&lt;p&gt;&lt;img src=&apos;lost&apos;&gt; After a leap the place is lost. Move back to the highlighted frame; the yellow arrow points there, and the run goes on by itself.&lt;/p&gt;&lt;h3&gt;What helps&lt;/h3&gt;&lt;ul&gt;&lt;li&gt;Keep the light and the focus steady.&lt;/li&gt;&lt;li&gt;Keep something with texture in view.&lt;/li&gt;&lt;li&gt;Go in lines that overlap by a third of the frame.&lt;/li&gt;&lt;li&gt;Took it the wrong way? Ctrl+Z takes placed frames back.&lt;/li&gt;&lt;li&gt;To go on elsewhere, hold Ctrl and click that place of the picture, then bring it under the camera.&lt;/li&gt;&lt;/ul&gt;&lt;h3&gt;Simulated microscope&lt;/h3&gt;&lt;p&gt;The arrow keys move the stage, with Shift too far; or drag in the stage panel.&lt;/p&gt;</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LiveState</name>
    <message>
        <source>placed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>tracked</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>too far</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>lost</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unusable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>live view</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Options</name>
    <message>
        <source>where frames come from: a folder, pictures&apos; folder, video file, camera number, stream address, or &apos;microscope&apos; for the simulated one</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a picture for the simulated microscope to look at</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>starts the run at once</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>saves the picture there when the source has ended</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>closes the window when that is done</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>saves the whole canvas, not the placed frames alone</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>fitness of a frame: 0 by overlap, 1 by little motion</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>works at 1/N of the size, 1 to 7</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>more corners, slower and surer, 0 to 100</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>light, dark or system</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>keeps the journals of runs, by which they are taken up after a crash, there; a script keeps none without this</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>neither reads nor keeps settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--%1 takes a number from %2 to %3, not &apos;%4&apos;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--theme takes light, dark or system, not &apos;%1&apos;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Examples:
  jqscope                                   the last source, or a simulated microscope
  jqscope --source 0 --run                  the first camera
  jqscope --source frames/ --run --save mosaic.png --quit

With --run, --save and --quit it does what the buttons do and ends: 0 saved, 1 not saved, 2 wrong usage.
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shows a mosaic grow while you move the microscope&apos;s stage.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the same as --source</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>prints this</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>prints the version</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>one source can be given, and &apos;%1&apos; is one more</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--quit waits for a run: add --run</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--save needs a run: add --run</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Try &apos;jqscope --help&apos;.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Overlay</name>
    <message>
        <source>go back here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, about here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 mm</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 µm</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 nm</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Preferences</name>
    <message>
        <source>Unknown objective</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RunDesk</name>
    <message>
        <source>The run goes on: bring its last frame under the camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture is being saved: frames can be taken back after that</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is nothing to take back</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The last frame is taken back</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Going on from the frame placed last again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Going on from here: bring this place under the camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A whole frame of picture is needed to go on from a place</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Found: the run goes on from an earlier place</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>jqscope::Banner</name>
    <message>
        <source>What to do now</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>jqscope::BatchBar</name>
    <message>
        <source>%1: in the picture, but its place is doubtful</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Canc&amp;el</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>C&amp;lose the list</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Batch of files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Files stitched</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>End the batch after the file in hand; what is placed stays (F6)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide the list of files that are not in the picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Files that are not in the picture, and why</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Batch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Files to look at: %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>jqscope::CameraDialog</name>
    <message>
        <source>%1 × %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, up to %2 frames a second</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Looking for cameras…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose one, or give a number (0 is the first), the address of a stream, or genicam:NAME</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What the camera is asked for; it may give the next best</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Size and rate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No camera was found. Give the address of a stream, or use the simulated microscope.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>as the camera has it</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>jqscope::Capture</name>
    <message>
        <source>The camera gives no more frames</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>jqscope::CoachBar</name>
    <message>
        <source>Shift and speed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Left: how far the frame is from the one placed last. Right: how fast it moves, from one frame to the next. The hatched ranges serve best.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shift %1, speed %2 per frame</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shift</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 (placed from %2 to %3)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not measured</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Speed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 a frame, best up to %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>jqscope::Counters</name>
    <message>
        <source>Numbers of the run</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Frames placed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not yet far enough</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Left out, %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not taken in time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Frames a second</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Frame to screen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 × %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mosaic + view</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 + %2 MB</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Left of the limit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Memory left</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>jqscope::DriftPlot</name>
    <message>
        <source>Drift</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Over ground that was placed before: how far the frame lies from where that ground has it. Nothing is changed by it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drift: not measured</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drift: %1 pixels</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> (%1 µm)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>, earlier</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>jqscope::JournalBar</name>
    <message>
        <source>&amp;Take it up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Throw it &amp;away</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Journal of the run</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rebuild the picture from the journal and go on with the run</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove the journal; its picture cannot be made any more</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>The run of %1 did not come to its end: %n placed frame(s) are there. Take it up again?</source>
        <translation type="unfinished">
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>What it recorded after them is damaged.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Not now</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>C&amp;lose</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>jqscope::MainWindow</name>
    <message>
        <source>Unknown objective</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>JQ Scope</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Run</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Simulated microscope</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Progress</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1; trying again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The run goes on, but it is not recorded and could not be taken up after a crash: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>paused</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ended</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>stopped</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>batch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The view is on the clipboard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>About</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;b&gt;JQ Scope %1&lt;/b&gt;&lt;p&gt;Shows a mosaic grow while you move the microscope&apos;s stage.&lt;/p&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not saved</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n placed frame(s) are not saved. Go on without saving?</source>
        <translation type="unfinished">
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>Save the picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pictures (*.png *.ome.tif *.ome.tiff *.dzi *.tif *.tiff *.jpg *.bmp *.ppm *.webp);;All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saving %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saved as %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Background</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Theme of the system</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Light theme</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dark theme</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rebuilding the picture: frame %1 of %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The run cannot be taken up: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Video file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Slide of the simulated microscope</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This camera does not let its exposure and white balance be held</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exposure and white balance stay as they are</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The camera sets exposure and white balance by itself</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Journal of a run</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pictures of one size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Folder to watch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Folder of pictures</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>jqscope::Minimap</name>
    <message>
        <source>Map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What is covered, the way of the camera, and the part in view. Click to go there.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>jqscope::MosaicView</name>
    <message>
        <source>Mosaic</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture so far and the frame under the camera</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>jqscope::SaveJob</name>
    <message>
        <source>there is no picture yet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>saving was cancelled</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>jqscope::SettingsDialog</name>
    <message>
        <source>Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The next run</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>compare the frame with the picture (overlap test, mode 0)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>wait until the stage stands still (motion test, mode 1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A frame is fit when you</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1/</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1/1 keeps all pixels; 1/2 halves the picture&apos;s sides and is faster</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Size of the picture (detection level)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>More corners are slower and surer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Effort to find matches (corner budget)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> MB</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>as large as the machine allows</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A frame for which the picture would have to grow beyond is left out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Largest picture in memory</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no: a crash loses the run</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>until the run has ended, to take it up after a crash</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>for good</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Each placed frame is written to the disk as it comes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keep a journal</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Objectives; the selected one is in use</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Micrometres of a camera pixel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Objectives</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Add an objective</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>10×</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Remove the selected one</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>jqscope::StagePad</name>
    <message>
        <source>Stage</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag to move the stage. The arrow keys do the same; with Shift they take larger steps.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>jqscope::StagePanel</name>
    <message>
        <source>Noise</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Grain of the camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Vignetting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Light lost in the corners, per cent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Defocus</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Blur, tenths of a pixel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exposure drift</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Change of the exposure from frame to frame, per cent</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
