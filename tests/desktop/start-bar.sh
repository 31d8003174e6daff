# Starts the bar and waits until it shows; for a shell to read. Now and then a start of xfce4-panel 4.18 ends in its
# main loop without a window; such a one is ended and another started, which xfce4-panel.log tells.
for patience in 5 10 20 40 80; do
    xfce4-panel --disable-wm-check >>"$SESSION_LOGS/xfce4-panel.log" 2>&1 &
    bar=$!
    for ((i = 0; i < patience * 20; ++i)); do
        ! xdotool search --onlyvisible --class xfce4-panel >/dev/null 2>&1 || break 2
        sleep 0.05
    done
    echo "no window after $patience seconds: started anew" >>"$SESSION_LOGS/xfce4-panel.log"
    kill -KILL "$bar"
    wait "$bar"
done 2>/dev/null
